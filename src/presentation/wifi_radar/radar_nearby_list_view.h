#pragma once

#include "presentation/wifi_radar/wifi_radar_content.h"

#include <QListView>

#include <vector>

namespace tolvo {

/// The networks around, in a list that scrolls: each with its name, its channel and its signal. Names are shown as they
/// are, whatever they hold.
class RadarNearbyListView final : public QListView {
public:
    /// From a row's edge to its texts, for the ring where the keyboard is.
    static constexpr int rowInset = 6;

    explicit RadarNearbyListView(QWidget* parent = nullptr);

    /// Touches only the rows that differ; the place that one has scrolled to stays.
    void show(const std::vector<RadarNearbyNetworkRow>& rows);

private:
    class Rows;
    Rows* rows_;
};

} // namespace tolvo
