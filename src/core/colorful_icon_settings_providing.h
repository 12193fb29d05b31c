#pragma once

#include "core/app_settings_storing.h"

namespace tolvo {

/// The one setting that the status icon needs.
class ColorfulIconSettingsProviding {
public:
    ColorfulIconSettingsProviding(const ColorfulIconSettingsProviding&) = delete;
    ColorfulIconSettingsProviding& operator=(const ColorfulIconSettingsProviding&) = delete;
    virtual ~ColorfulIconSettingsProviding() = default;

    virtual bool colorfulIconEnabled() const = 0;

protected:
    ColorfulIconSettingsProviding() = default;
};

class UserDefaultsColorfulIconSettingsProvider final : public ColorfulIconSettingsProviding {
public:
    explicit UserDefaultsColorfulIconSettingsProvider(const AppSettingsStoring& settingsStore)
        : settingsStore_(settingsStore) {}

    bool colorfulIconEnabled() const override { return settingsStore_.colorfulIcon(); }

private:
    const AppSettingsStoring& settingsStore_;
};

} // namespace tolvo
