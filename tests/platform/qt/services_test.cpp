#include "platform/qt/qt_locale_formats.h"
#include "platform/qt/qt_workspace.h"
#include "platform/qt/window_frame_store.h"
#include "platform/qt/window_placement.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <vector>

namespace tolvo::testing {
namespace {

TEST(PopoverPlacement, StaysBesideTheIconInsideTheScreen) {
    struct Row {
        const char* panel;
        ScreenRect place;
        ScreenRect workArea;
        ScreenRect frame;
    };
    const ContentSize size{400, 650};
    for (const Row& row : {
             Row{"top", {800, 0, 24, 30}, {0, 30, 1280, 870}, {612, 36, 400, 650}},
             Row{"top, at the edge", {1250, 0, 24, 30}, {0, 30, 1280, 870}, {874, 36, 400, 650}},
             Row{"top, only the click known", {800, 15, 0, 0}, {0, 30, 1280, 870}, {600, 36, 400, 650}},
             Row{"bottom", {800, 870, 24, 30}, {0, 0, 1280, 870}, {612, 214, 400, 650}},
             Row{"left", {0, 400, 40, 24}, {40, 0, 1240, 900}, {46, 87, 400, 650}},
             Row{"right", {1240, 860, 40, 24}, {0, 0, 1240, 900}, {834, 244, 400, 650}},
             Row{"second screen", {2000, 0, 24, 30}, {1280, 30, 1920, 1050}, {1812, 36, 400, 650}},
             Row{"screen too small", {300, 0, 24, 30}, {0, 30, 320, 450}, {6, 36, 400, 438}},
         })
        EXPECT_EQ(popoverFrame(row.place, size, row.workArea), row.frame) << row.panel;
}

TEST(WindowPlacement, BringsAFrameBackFromAScreenThatIsGone) {
    using Areas = std::vector<ScreenRect>;
    const Areas two{{0, 30, 1280, 870}, {1280, 0, 1920, 1080}};
    const Areas one{two.front()};
    const ScreenRect onSecond{1400, 100, 980, 680};
    EXPECT_EQ(frameOnScreen(onSecond, two), onSecond);
    EXPECT_EQ(frameOnScreen(onSecond, one), (ScreenRect{300, 100, 980, 680}));
    EXPECT_EQ(frameOnScreen(onSecond, Areas{}), onSecond);
    EXPECT_EQ(frameOnScreen({1210, 100, 980, 680}, one), (ScreenRect{300, 100, 980, 680})) << "nothing left to grasp";
    EXPECT_EQ(frameOnScreen({1200, 100, 980, 680}, one), (ScreenRect{1200, 100, 980, 680}));
    EXPECT_EQ(frameOnScreen({100, -20, 980, 680}, one), (ScreenRect{100, 30, 980, 680})) << "the title is off screen";
    EXPECT_EQ(frameOnScreen({-4000, 5000, 3000, 2000}, one), (ScreenRect{0, 30, 1280, 870}));
}

class FrameStore : public ::testing::Test {
protected:
    void write(const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("state/windows.json"));
    WindowFrameStore store{path};
    const QString name = QStringLiteral("tolvo.speedTest.windowFrame");
};

TEST_F(FrameStore, KeepsFramesByNameAcrossRuns) {
    EXPECT_FALSE(store.frame(name));
    store.setFrame(name, {-10, 20, 980, 680});
    store.setFrame(QStringLiteral("other"), {1, 2, 3, 4});
    EXPECT_EQ(WindowFrameStore(path).frame(name), (ScreenRect{-10, 20, 980, 680}));
}

TEST_F(FrameStore, TakesADamagedFileForAnEmptyOne) {
    store.setFrame(name, {1, 2, 3, 4});
    const QByteArray key = "{\"" + name.toUtf8() + "\":";
    for (const QByteArray& bytes :
         {QByteArray("{"), QByteArray("[]"), key + "[1,2,3]}", key + "[1,2,\"3\",4]}", key + "[1,2,0,4]}",
          key + "[1,2,1e300,4]}", key + "{}}", QByteArray(70000, ' ') + key + "[1,2,3,4]}"}) {
        write(bytes);
        EXPECT_FALSE(store.frame(name)) << bytes.left(60).toStdString();
    }
    store.setFrame(name, {5, 6, 7, 8});
    EXPECT_TRUE(store.frame(name));
    WindowFrameStore unwritable(QStringLiteral("/dev/null/windows.json"));
    unwritable.setFrame(name, {5, 6, 7, 8});
    EXPECT_FALSE(unwritable.frame(name));
}

TEST(LocaleFormats, FollowTheLocale) {
    using namespace std::chrono;
    qputenv("TZ", "UTC");
    struct Row {
        QLocale::Language language;
        const char* separator;
        const char* time;
        const char* date;
    };
    const system_clock::time_point evening = sys_days(2026y / 1 / 31) + 22h + 5min + 9s;
    for (const Row& row : {Row{QLocale::C, ".", "22:05:09", "31 January 2026"},
                           Row{QLocale::English, ".", "10:05:09 PM", "January 31, 2026"},
                           Row{QLocale::German, ",", "22:05:09", "31. Januar 2026"},
                           Row{QLocale::French, ",", "22:05:09", "31 janvier 2026"}}) {
        const QtLocaleFormats formats{QLocale(row.language)};
        std::string time = formats.timeOfDay(evening);
        for (auto at = time.find("\u202f"); at != std::string::npos; at = time.find("\u202f"))
            time.replace(at, 3, " ");
        EXPECT_EQ(formats.decimalSeparator(), row.separator);
        EXPECT_EQ(time, row.time);
        EXPECT_EQ(formats.longDate(2026y / 1 / 31), row.date);
        EXPECT_EQ(formats.localDate(evening), 2026y / 1 / 31);
    }
}

TEST(Workspace, RefusesWhatIsNeitherAWebAddressNorAFile) {
    QtWorkspace workspace;
    for (const char* text : {"x-scheme:page", "javascript:alert(1)", "http:///path", "https:relative", "relative/path",
                             "file:///nowhere/at/all", "file://server/share", "mailto:a@example.org"})
        EXPECT_FALSE(workspace.openURL(*URL::parse(text))) << text;
}

} // namespace
} // namespace tolvo::testing
