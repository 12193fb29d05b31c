#include "platform/qt/file_chooser_portal.h"

#include "core/async/one_shot.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QFile>
#include <QRandomGenerator>
#include <QUrl>
#include <QWidget>

#include <system_error>

namespace tolvo {

/// As the portal writes which files may be chosen: a name, and patterns of a kind each.
struct PortalFilePattern {
    static constexpr quint32 glob = 0;

    quint32 kind = glob;
    QString pattern;
};
struct PortalFileFilter {
    QString name;
    QList<PortalFilePattern> patterns;
};

// The bus's marshalling finds these by their parameters, and wants what it gave returned.
// NOLINTBEGIN(bugprone-return-const-ref-from-parameter)
static QDBusArgument& operator<<(QDBusArgument& argument, const PortalFilePattern& pattern) {
    argument.beginStructure();
    argument << pattern.kind << pattern.pattern;
    argument.endStructure();
    return argument;
}
static const QDBusArgument& operator>>(const QDBusArgument& argument, PortalFilePattern& pattern) {
    argument.beginStructure();
    argument >> pattern.kind >> pattern.pattern;
    argument.endStructure();
    return argument;
}
static QDBusArgument& operator<<(QDBusArgument& argument, const PortalFileFilter& filter) {
    argument.beginStructure();
    argument << filter.name << filter.patterns;
    argument.endStructure();
    return argument;
}
static const QDBusArgument& operator>>(const QDBusArgument& argument, PortalFileFilter& filter) {
    argument.beginStructure();
    argument >> filter.name >> filter.patterns;
    argument.endStructure();
    return argument;
}
// NOLINTEND(bugprone-return-const-ref-from-parameter)

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString chooserInterface = QStringLiteral("org.freedesktop.portal.FileChooser");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");
/// Until it says that it will ask, which may have to start it first; the user has all the time there is.
constexpr int answerMilliseconds = 5000;
constexpr uint chosenResponse = 0;
constexpr uint cancelledResponse = 1;

QString activeWindowHandle() {
    const QWidget* window = QApplication::activeWindow();
    if (window == nullptr || QGuiApplication::platformName() != QLatin1String("xcb"))
        return {};
    return QStringLiteral("x11:%1").arg(window->winId(), 0, 16);
}

QDBusMessage saveCall(const SaveDialogRequest& request, const QString& token) {
    qDBusRegisterMetaType<PortalFilePattern>();
    qDBusRegisterMetaType<QList<PortalFilePattern>>();
    qDBusRegisterMetaType<PortalFileFilter>();
    qDBusRegisterMetaType<QList<PortalFileFilter>>();
    const PortalFileFilter filter{toQString(request.fileTypeName),
                                  {{PortalFilePattern::glob, QStringLiteral("*.") + toQString(request.fileExtension)}}};
    const QVariantMap options{{QStringLiteral("handle_token"), token},
                              {QStringLiteral("current_name"), toQString(request.fileName)},
                              {QStringLiteral("filters"), QVariant::fromValue(QList{filter})}};
    auto call = QDBusMessage::createMethodCall(portalService, portalPath, chooserInterface, QStringLiteral("SaveFile"));
    call << activeWindowHandle() << toQString(request.title) << options;
    return call;
}

FileChooserPortal::Answer answerOf(const QDBusMessage& response) {
    const QVariantList arguments = response.arguments();
    const uint code = arguments.value(0).toUInt();
    if (code == cancelledResponse)
        return std::nullopt;
    const auto results = qdbus_cast<QVariantMap>(arguments.value(1));
    const QStringList urls = results.value(QStringLiteral("uris")).toStringList();
    const QString file = urls.isEmpty() ? QString() : QUrl(urls.front()).toLocalFile();
    if (code != chosenResponse || file.isEmpty())
        return std::unexpected(NoPortal());
    return std::filesystem::path(QFile::encodeName(file).toStdString());
}

/// The portal leaves a name as the user typed it; an existing file is never one that nobody agreed to replace.
std::filesystem::path withExtension(const std::filesystem::path& path, const std::string& extension) {
    std::filesystem::path extended = path;
    extended += "." + extension;
    std::error_code error;
    return path.has_extension() || std::filesystem::exists(extended, error) ? path : extended;
}

/// One question to the portal. Taken back when this object goes.
class PortalRequest final : public QObject {
public:
    PortalRequest(const QDBusConnection& connection, const SaveDialogRequest& request)
        : connection_(connection),
          token_(QStringLiteral("tolvo%1").arg(QRandomGenerator::global()->generate64())),
          path_(QStringLiteral("%1/request/%2/%3")
                    .arg(portalPath, connection.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_')),
                         token_)),
          response_(connection, portalService, path_, requestInterface, QStringLiteral("Response"),
                    [this](const QDBusMessage& response) { answer.set(answerOf(response)); }),
          portal_(portalService, connection, QDBusServiceWatcher::WatchForUnregistration) {
        const auto giveUp = [this] { answer.set(std::unexpected(NoPortal())); };
        connect(&portal_, &QDBusServiceWatcher::serviceUnregistered, this, giveUp);
        auto* pending =
            new QDBusPendingCallWatcher(connection_.asyncCall(saveCall(request, token_), answerMilliseconds), this);
        connect(pending, &QDBusPendingCallWatcher::finished, this, [pending, giveUp] {
            if (pending->isError())
                giveUp();
        });
    }
    ~PortalRequest() override {
        auto close = QDBusMessage::createMethodCall(portalService, path_, requestInterface, QStringLiteral("Close"));
        close.setAutoStartService(false);
        connection_.send(close);
    }

    OneShot<FileChooserPortal::Answer> answer;

private:
    QDBusConnection connection_;
    QString token_;
    QString path_;
    DBusSignalListener response_;
    QDBusServiceWatcher portal_;
};

} // namespace

FileChooserPortal::FileChooserPortal(SessionBus& bus) {
    bus.addFollower(
        {[this](const QDBusConnection& connection) { connection_ = connection; }, [this] { connection_.reset(); }});
}

Task<FileChooserPortal::Answer> FileChooserPortal::saveFile(SaveDialogRequest request) const {
    if (!connection_)
        co_return std::unexpected(NoPortal());
    const PortalRequest asked(*connection_, request);
    Answer answer = co_await asked.answer.take();
    if (answer && *answer)
        answer = withExtension(**answer, request.fileExtension);
    co_return answer;
}

} // namespace tolvo
