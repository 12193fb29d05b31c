#pragma once

#include <expected>
#include <string>

namespace tolvo {

/// RequiresApproval: registered, but the user or the system keeps it from being started. NotFound: what is registered
/// doesn't start this program.
enum class LoginItemStatus { NotRegistered, Enabled, RequiresApproval, NotFound };

struct LoginItemError {
    /// In words for a person.
    std::string description;

    bool operator==(const LoginItemError&) const = default;
};

/// The program as one that the system starts when the user logs in. The system owns the truth. Main thread only.
class LoginItem {
public:
    LoginItem(const LoginItem&) = delete;
    LoginItem& operator=(const LoginItem&) = delete;
    virtual ~LoginItem() = default;

    virtual LoginItemStatus status() const = 0;
    /// Success leaves it enabled, or waiting for an approval that only the user can give.
    virtual std::expected<void, LoginItemError> registerItem() = 0;
    virtual std::expected<void, LoginItemError> unregisterItem() = 0;
    /// Takes the user to where login items are set.
    virtual void openSettings() = 0;

protected:
    LoginItem() = default;
};

} // namespace tolvo
