#pragma once

#include "presentation/location_permission/location_permission_content.h"

#include <QWidget>

#include <functional>

class QLabel;

namespace tolvo {

class TextButtonView;

/// What the location permission means at present, and the button that changes it.
class LocationPermissionView final : public QWidget {
public:
    explicit LocationPermissionView(QWidget* parent = nullptr);

    std::function<void()> onPrimaryAction;

    void show(const LocationPermissionContent& content);

private:
    QLabel* title_;
    QLabel* text_;
    TextButtonView* button_;
};

} // namespace tolvo
