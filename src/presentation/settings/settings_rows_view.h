#pragma once

#include "presentation/settings/settings_content.h"

#include <QWidget>

#include <functional>

class QLabel;

namespace tolvo {

class SwitchView;
class TextButtonView;

/// A switch with its title, its state in a word, and a line on what it means.
class SettingsSwitchView final : public QWidget {
public:
    explicit SettingsSwitchView(QWidget* parent = nullptr);

    std::function<void(bool isOn)> onToggle;

    void show(const SettingsSwitch& content);

private:
    QLabel* title_;
    QLabel* state_;
    SwitchView* switch_;
    QLabel* line_;
};

/// A symbol, a text, and the button that deals with it.
class SettingsNoticeView final : public QWidget {
public:
    explicit SettingsNoticeView(QWidget* parent = nullptr);

    std::function<void()> onAction;

    /// Takes no room without a notice.
    void show(const std::optional<SettingsNotice>& notice);

private:
    class Symbol;

    Symbol* symbol_;
    QLabel* text_;
    TextButtonView* button_;
};

/// A wrapping text in the caption's size and the secondary colour.
QLabel* makeSettingsLine(QWidget* parent);

} // namespace tolvo
