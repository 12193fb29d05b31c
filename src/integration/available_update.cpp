#include "integration/available_update.h"

#include <string_view>

namespace tolvo {

namespace {

/// Reads field after field and remembers whether one of them couldn't be read.
class ReplyFields {
public:
    explicit ReplyFields(const JSONMembers& members) : members_(members) {}

    template<class T>
    T required(std::string_view key) {
        const auto found = members_.find(key);
        if (found != members_.end()) {
            if (const T* value = std::get_if<T>(&found->second))
                return *value;
        }
        areValid_ = false;
        return T{};
    }

    std::optional<std::string> optionalText(std::string_view key) {
        const auto found = members_.find(key);
        if (found == members_.end() || std::holds_alternative<JSONNull>(found->second))
            return std::nullopt;
        return required<std::string>(key);
    }

    bool areValid() const { return areValid_; }

private:
    const JSONMembers& members_;
    bool areValid_ = true;
};

} // namespace

std::optional<AvailableUpdate> decodeAvailableUpdate(const JSONMembers& reply) {
    ReplyFields fields(reply);
    AvailableUpdate update{.version = fields.required<std::string>("version"),
                           .buildNumber = fields.required<std::int64_t>("buildNumber"),
                           .releaseDate = fields.required<std::string>("releaseDate"),
                           .downloadUrl = fields.required<std::string>("downloadUrl"),
                           .releaseNotes = fields.optionalText("releaseNotes"),
                           .minimumSystemVersion = fields.optionalText("minimumSystemVersion")};
    if (!fields.areValid())
        return std::nullopt;
    return update;
}

} // namespace tolvo
