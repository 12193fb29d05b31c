#pragma once

#include "presentation/dashboard/dashboard_content.h"

#include <QWidget>

class QLabel;

namespace tolvo {

class IconButtonView;
class NameLabelView;

/// The network's name with its band; a button shows the channel's details.
class NetworkHeaderRowView final : public QWidget {
public:
    explicit NetworkHeaderRowView(QWidget* parent = nullptr);

    void show(const WiFiNetworkHeader& header);

protected:
    /// Escape puts the channel's details away.
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    class SignalSymbol;

    void toggleChannel();

    SignalSymbol* symbol_;
    NameLabelView* name_;
    QLabel* band_;
    IconButtonView* details_;
    /// A bubble over the rows below the button.
    QLabel* channel_;
};

} // namespace tolvo
