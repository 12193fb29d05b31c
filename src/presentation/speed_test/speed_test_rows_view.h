#pragma once

#include "presentation/rows/card_view.h"
#include "presentation/speed_test/speed_test_content.h"

class QLabel;

namespace tolvo {

class LinearProgressView;
class SymbolGroundView;
class TabularLabelView;

/// How far a run is, and what it does.
class SpeedTestProgressView final : public CardView {
public:
    explicit SpeedTestProgressView(QWidget* parent = nullptr);

    void show(const SpeedTestContent& content);

private:
    std::string statusLine_;
    QLabel* status_;
    TabularLabelView* percent_;
    LinearProgressView* bar_;
};

/// What load does to latency, in a sentence beside its direction's symbol.
class SpeedTestInsightView final : public QWidget {
public:
    explicit SpeedTestInsightView(QWidget* parent = nullptr);

    void show(const SpeedTestInsightRow& row);

private:
    SymbolGroundView* indicator_;
    QLabel* text_;
};

} // namespace tolvo
