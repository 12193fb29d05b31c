#include "presentation/settings/settings_rows_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/breakable_text_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/switch_view.h"
#include "presentation/rows/symbol_view.h"
#include "presentation/rows/text_button_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace tolvo {

namespace {

constexpr int symbolSize = 18;

} // namespace

QLabel* makeSettingsLine(QWidget* parent) {
    auto* line = makeLabel("", TextStyle::Caption, parent, QPalette::PlaceholderText);
    line->setWordWrap(true);
    return line;
}

SettingsSwitchView::SettingsSwitchView(QWidget* parent)
    : QWidget(parent),
      title_(makeLabel("", TextStyle::Headline, this)),
      state_(makeSettingsLine(this)),
      switch_(new SwitchView("", this)),
      line_(makeSettingsLine(this)) {
    title_->setBuddy(switch_);
    title_->setWordWrap(true);
    state_->setWordWrap(false);
    switch_->onToggle = [this](bool isOn) { onToggle(isOn); };
    auto* top = new QHBoxLayout;
    top->setSpacing(spacing::item);
    top->addWidget(title_, 1);
    top->addWidget(state_);
    top->addWidget(switch_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 2, 0, 2);
    layout->setSpacing(3);
    layout->addLayout(top);
    layout->addWidget(line_);
}

void SettingsSwitchView::show(const SettingsSwitch& content) {
    title_->setText(toQString(content.title));
    state_->setText(toQString(content.stateLabel));
    state_->setHidden(content.stateLabel.empty());
    line_->setText(toQString(content.line));
    switch_->setAccessibleName(toQString(content.title));
    switch_->setAccessibleDescription(toQString(content.line));
    switch_->show(content.isOn);
}

class SettingsNoticeView::Symbol final : public QWidget {
public:
    explicit Symbol(QWidget* parent) : QWidget(parent) { setFixedSize(symbolSize, symbolSize); }

    void show(const SettingsNotice& notice) {
        name_ = notice.symbolName;
        tone_ = notice.symbolColor;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        drawSymbol(painter, name_, rect(), toneColor(tone_, palette()));
    }

private:
    std::string name_;
    Tone tone_ = Tone::Primary;
};

SettingsNoticeView::SettingsNoticeView(QWidget* parent)
    : QWidget(parent),
      symbol_(new Symbol(this)),
      text_(makeLabel("", TextStyle::Body, this)),
      button_(new TextButtonView("", ButtonProminence::Prominent, this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 4, 0, 4);
    layout->setSpacing(spacing::item);
    layout->addWidget(symbol_);
    layout->addWidget(text_, 1);
    layout->addWidget(button_);
    QObject::connect(button_, &QPushButton::clicked, this, [this] { onAction(); });
    hide();
}

void SettingsNoticeView::show(const std::optional<SettingsNotice>& notice) {
    setVisible(notice.has_value());
    if (!notice)
        return;
    symbol_->show(*notice);
    showBreakable(*text_, notice->text);
    button_->setTitle(notice->button);
}

} // namespace tolvo
