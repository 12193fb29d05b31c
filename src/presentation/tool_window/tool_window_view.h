#pragma once

#include "presentation/tool_window/tool_window_frame_content.h"

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace tolvo {

/// What tool windows share: a header, what stands fixed below it, and a body that scrolls or, without results, an
/// invitation. Arrows and page keys scroll the body, whichever control has the keyboard.
class ToolWindowView : public QWidget {
public:
    explicit ToolWindowView(const ToolWindowFrameContent& frame, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    /// A widget moves from one of these to another, keeping the keyboard, when it is added there.
    QHBoxLayout& header() { return *header_; }
    QVBoxLayout& fixedRows() { return *fixedRows_; }
    /// The controls below the invitation's text.
    QVBoxLayout& invitation() { return *invitation_; }
    QVBoxLayout& body() { return *body_; }
    void setInvitationVisible(bool isVisible);

private:
    void addHeader(const ToolWindowFrameContent& frame);
    QVBoxLayout* makeEmptyState(const ToolWindowFrameContent& frame);
    QScrollArea* makeScrollArea();

    QHBoxLayout* header_;
    QVBoxLayout* fixedRows_;
    QVBoxLayout* invitation_;
    QVBoxLayout* emptyState_ = nullptr;
    QLabel* emptyTitle_ = nullptr;
    QLabel* emptyText_ = nullptr;
    QVBoxLayout* body_ = nullptr;
    QScrollArea* scroll_ = nullptr;
};

} // namespace tolvo
