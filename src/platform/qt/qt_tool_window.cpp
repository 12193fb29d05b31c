#include "platform/qt/qt_tool_window.h"

#include "platform/qt/qt_geometry.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/window_placement.h"

#include <QGuiApplication>
#include <QMoveEvent>
#include <QResizeEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>

#include <vector>

namespace tolvo {

namespace {

/// Dragging a window changes its frame many times a second.
constexpr Seconds savingDelay(0.5);

constexpr Qt::WindowFlags fixedFlags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                       Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                                       Qt::WindowMinimizeButtonHint;

/// The screens' free areas, the primary one first.
std::vector<ScreenRect> workAreas() {
    std::vector<ScreenRect> areas;
    for (const QScreen* screen : QGuiApplication::screens())
        areas.push_back(toScreenRect(screen->availableGeometry()));
    return areas;
}

class FrameWindow final : public QWidget {
public:
    std::function<void()> onFrameChange;

protected:
    void moveEvent(QMoveEvent* event) override {
        QWidget::moveEvent(event);
        tell();
    }
    void resizeEvent(QResizeEvent* event) override {
        QWidget::resizeEvent(event);
        tell();
    }
    void hideEvent(QHideEvent* event) override {
        QWidget::hideEvent(event);
        tell();
    }

private:
    void tell() {
        if (onFrameChange)
            onFrameChange();
    }
};

class QtToolWindow final : public ToolWindow {
public:
    QtToolWindow(MainLoop& loop, WindowFrameStore& frames, const ToolWindowDescription& description,
                 std::unique_ptr<QWidget> content)
        : loop_(loop), frames_(frames) {
        const bool isFixed = description.resizing == WindowResizing::Fixed;
        window_.setWindowFlags(isFixed ? fixedFlags : fixedFlags | Qt::WindowMaximizeButtonHint);
        window_.setWindowTitle(toQString(description.title));
        window_.setObjectName(toQString(description.frameName));
        window_.setMinimumSize(toQSize(description.minimumSize));
        if (description.maximumSize)
            window_.setMaximumSize(toQSize(*description.maximumSize));
        window_.resize(toQSize(description.contentSize));
        auto* layout = new QVBoxLayout(&window_);
        layout->setContentsMargins(0, 0, 0, 0);
        if (content)
            layout->addWidget(content.release());
    }

    bool setFrameUsingName(const std::string& name) override {
        const auto saved = frames_.frame(toQString(name));
        if (!saved)
            return false;
        const QRect frame = toQRect(frameOnScreen(*saved, workAreas()));
        window_.resize(frame.size());
        window_.move(frame.topLeft());
        return true;
    }

    void setFrameAutosaveName(const std::string& name) override {
        window_.onFrameChange = [this, name = toQString(name)] {
            saving_ = loop_.after(savingDelay, [this, name] { saveFrame(name); });
        };
    }

    void center() override {
        const QScreen* screen = QGuiApplication::primaryScreen();
        if (screen == nullptr)
            return;
        QRect frame(QPoint(), window_.size());
        frame.moveCenter(screen->availableGeometry().center());
        window_.move(frame.topLeft());
    }

    void makeKeyAndOrderFront() override {
        if (window_.isMinimized())
            window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
        window_.show();
        window_.raise();
        window_.activateWindow();
    }

private:
    void saveFrame(const QString& name) {
        // A maximised window keeps the frame that it goes back to.
        const bool isNormal = (window_.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) == 0;
        const QRect frame = isNormal ? QRect(window_.pos(), window_.size()) : window_.normalGeometry();
        frames_.setFrame(name, toScreenRect(frame));
    }

    MainLoop& loop_;
    WindowFrameStore& frames_;
    FrameWindow window_;
    LoopRegistration saving_;
};

} // namespace

std::unique_ptr<ToolWindow> QtToolWindowFactory::makeToolWindow(const ToolWindowDescription& description) {
    const auto maker = contents_.find(description.kind);
    return std::make_unique<QtToolWindow>(loop_, frames_, description,
                                          maker == contents_.end() ? nullptr : maker->second());
}

} // namespace tolvo
