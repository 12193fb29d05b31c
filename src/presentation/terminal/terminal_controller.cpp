#include "presentation/terminal/terminal_controller.h"

#include <utility>

namespace tolvo {

namespace {

/// Several values change within one poll; they are drawn together.
constexpr Seconds drawingDelay(0.03);

} // namespace

TerminalController::TerminalController(MainLoop& loop, TextTerminal& terminal, TerminalGlyphs glyphs,
                                       TerminalPage& firstPage, std::map<std::string, TerminalPage*> pagesByKey,
                                       std::function<void()> onQuit)
    : loop_(loop),
      terminal_(terminal),
      view_(terminal, glyphs),
      firstPage_(firstPage),
      page_(&firstPage),
      pagesByKey_(std::move(pagesByKey)),
      onQuit_(std::move(onQuit)) {
    firstPage_.onChange = [this] { scheduleDrawing(); };
    for (const auto& [key, page] : pagesByKey_)
        page->onChange = [this] { scheduleDrawing(); };
}

TerminalController::~TerminalController() {
    leaveScreen();
    firstPage_.onChange = nullptr;
    for (const auto& [key, page] : pagesByKey_)
        page->onChange = nullptr;
}

void TerminalController::enterScreen() {
    isOnScreen_ = true;
    terminal_.enterScreen([this](const std::string& key) { handleKey(key); });
    redraw();
}

void TerminalController::leaveScreen() {
    isOnScreen_ = false;
    drawing_.reset();
    isDrawingScheduled_ = false;
    terminal_.leaveScreen();
}

void TerminalController::redraw() {
    view_.invalidate();
    scheduleDrawing();
}

void TerminalController::handleKey(const std::string& key) {
    if (key == "q")
        onQuit_();
    else if (page_ != &firstPage_ && key == "escape")
        show(firstPage_);
    else if (const auto other = pagesByKey_.find(key); page_ == &firstPage_ && other != pagesByKey_.end())
        show(*other->second);
    else
        page_->handleKey(key);
}

void TerminalController::show(TerminalPage& page) {
    page_->close();
    page_ = &page;
    page_->open();
    redraw();
}

void TerminalController::scheduleDrawing() {
    if (!isOnScreen_ || std::exchange(isDrawingScheduled_, true))
        return;
    drawing_ = loop_.after(drawingDelay, [this] { draw(); });
}

void TerminalController::draw() {
    isDrawingScheduled_ = false;
    if (!view_.show(page_->lines(view_.size())))
        onQuit_();
}

} // namespace tolvo
