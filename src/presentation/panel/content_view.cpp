#include "presentation/panel/content_view.h"

#include "presentation/captive_portal_overlay/captive_portal_overlay_view.h"
#include "presentation/connection_overlay/connection_overlay_view.h"
#include "presentation/dashboard/dashboard_view.h"
#include "presentation/panel/panel_controller.h"
#include "presentation/settings/settings_overlay_view.h"
#include "presentation/toolbox/toolbox_overlay_view.h"

#include <QKeyEvent>
#include <QStyle>

#include <cmath>
#include <utility>

namespace tolvo {

namespace {

constexpr int slidingMilliseconds = 380;

/// A critically damped spring: quick at first, settling without a swing past the edge.
double springShare(double progress) {
    constexpr double stiffness = 9;
    const auto position = [](double t) { return 1 - (1 + stiffness * t) * std::exp(-stiffness * t); };
    return position(progress) / position(1);
}

int routeDepth(PanelRoute route) {
    const auto back = backButton(route);
    return back ? 1 + routeDepth(back->route) : 0;
}

template<class View>
View& madeOnce(View*& view, PanelController& controller, QWidget* parent) {
    if (view == nullptr) {
        view = new View(controller, parent);
        view->hide();
    }
    return *view;
}

} // namespace

ContentView::ContentView(PanelController& controller, QWidget* parent)
    : QWidget(parent), controller_(controller), dashboard_(new DashboardView(controller, this)), current_(dashboard_) {
    sliding_.setDuration(slidingMilliseconds);
    sliding_.setStartValue(0.0);
    sliding_.setEndValue(1.0);
    connect(&sliding_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { slide(value.toDouble()); });
    connect(&sliding_, &QVariantAnimation::finished, this, [this] { finishSliding(); });
}

ContentView::~ContentView() {
    controller_.setDisplay(nullptr);
}

QWidget& ContentView::page(PanelRoute route) {
    switch (route) {
    case PanelRoute::Dashboard:
        return *dashboard_;
    case PanelRoute::Settings:
        return madeOnce(settings_, controller_, this);
    case PanelRoute::Toolbox:
        return madeOnce(toolbox_, controller_, this);
    case PanelRoute::ConnectionMonitor:
        return madeOnce(connection_, controller_, this);
    case PanelRoute::CaptivePortal:
        return madeOnce(captivePortal_, controller_, this);
    }
    std::unreachable();
}

void ContentView::show(const PanelContent& content) {
    QWidget& wanted = page(content.route);
    fill(content);
    if (&wanted == current_)
        return;
    const bool isDeeper = routeDepth(content.route) >= routeDepth(route_);
    route_ = content.route;
    startSliding(*std::exchange(current_, &wanted), wanted, isDeeper);
}

void ContentView::fill(const PanelContent& content) {
    dashboard_->show(content.dashboard, content.location);
    if (content.route == PanelRoute::ConnectionMonitor)
        connection_->show(content.connection);
    if (content.route == PanelRoute::CaptivePortal)
        captivePortal_->show(content.captivePortal);
    if (content.route == PanelRoute::Settings)
        settings_->show(content.settings);
}

void ContentView::startSliding(QWidget& from, QWidget& to, bool isDeeper) {
    sliding_.stop();
    finishSliding();
    previous_ = &from;
    isDeeper_ = isDeeper;
    to.setGeometry(rect());
    to.setVisible(true);
    (isDeeper ? to : from).raise();
    const bool isAnimated = isVisible() && style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0;
    if (isAnimated) {
        slide(0);
        sliding_.start();
    } else {
        finishSliding();
    }
    // The keyboard goes on in the new panel, from its first control.
    to.setFocus(Qt::OtherFocusReason);
}

void ContentView::slide(double progress) {
    if (previous_ == nullptr)
        return;
    const double share = springShare(progress);
    const int offset = static_cast<int>(std::lround(width() * (isDeeper_ ? 1 - share : share)));
    QWidget& moving = isDeeper_ ? *current_ : *previous_;
    moving.move(layoutDirection() == Qt::RightToLeft ? -offset : offset, 0);
}

void ContentView::finishSliding() {
    if (QWidget* hidden = std::exchange(previous_, nullptr)) {
        hidden->hide();
        hidden->move(0, 0);
    }
    current_->setGeometry(rect());
}

void ContentView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    controller_.setDisplay(this);
    // No control is chosen yet: the first Tab goes to the first one.
    current_->setFocus(Qt::OtherFocusReason);
}

void ContentView::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    controller_.setDisplay(nullptr);
    sliding_.stop();
    finishSliding();
}

void ContentView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    current_->resize(size());
    if (previous_ != nullptr)
        previous_->resize(size());
}

void ContentView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        controller_.goBack();
    else
        QWidget::keyPressEvent(event);
}

} // namespace tolvo
