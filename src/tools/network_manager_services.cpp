#include "tools/network_manager_services.h"

#include <dbus/dbus.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <variant>

namespace tolvo::tools {

namespace {

constexpr const char* service = "org.freedesktop.NetworkManager";
constexpr const char* activeConnectionInterface = "org.freedesktop.NetworkManager.Connection.Active";
/// More than a machine has; each costs a call.
constexpr std::size_t mostConnections = 64;

struct CloseConnection {
    void operator()(DBusConnection* connection) const {
        ::dbus_connection_close(connection);
        ::dbus_connection_unref(connection);
    }
};
struct UnrefMessage {
    void operator()(DBusMessage* message) const { ::dbus_message_unref(message); }
};
using Connection = std::unique_ptr<DBusConnection, CloseConnection>;
using Message = std::unique_ptr<DBusMessage, UnrefMessage>;

/// The bus that the system offers. A private connection, since a shared one would end the process with the bus.
Connection connectToSystemBus() {
    const char* const configured = std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
    const char* const address = configured != nullptr ? configured : "unix:path=/run/dbus/system_bus_socket";
    Connection connection(::dbus_connection_open_private(address, nullptr));
    if (connection && ::dbus_bus_register(connection.get(), nullptr) == FALSE)
        connection.reset();
    return connection;
}

/// Calls a function of the properties interface with one or two texts; nothing when it fails.
Message callProperties(DBusConnection& connection, const char* path, const char* method, const char* interfaceName,
                       const char* property) {
    const Message call(::dbus_message_new_method_call(service, path, "org.freedesktop.DBus.Properties", method));
    if (!call)
        return nullptr;
    // A look must not start a service that the user keeps off.
    ::dbus_message_set_auto_start(call.get(), FALSE);
    DBusMessageIter arguments;
    ::dbus_message_iter_init_append(call.get(), &arguments);
    ::dbus_message_iter_append_basic(&arguments, DBUS_TYPE_STRING, static_cast<const void*>(&interfaceName));
    if (property != nullptr)
        ::dbus_message_iter_append_basic(&arguments, DBUS_TYPE_STRING, static_cast<const void*>(&property));
    return Message(
        ::dbus_connection_send_with_reply_and_block(&connection, call.get(), DBUS_TIMEOUT_USE_DEFAULT, nullptr));
}

/// Enters a container of this type and moves on behind it; nothing when something else stands here.
std::optional<DBusMessageIter> entered(DBusMessageIter& position, int type) {
    if (::dbus_message_iter_get_arg_type(&position) != type)
        return std::nullopt;
    DBusMessageIter inside;
    ::dbus_message_iter_recurse(&position, &inside);
    ::dbus_message_iter_next(&position);
    return inside;
}

/// Texts and object paths alike.
std::optional<std::string> textAt(DBusMessageIter& position) {
    const int type = ::dbus_message_iter_get_arg_type(&position);
    if (type != DBUS_TYPE_STRING && type != DBUS_TYPE_OBJECT_PATH)
        return std::nullopt;
    const char* text = nullptr;
    ::dbus_message_iter_get_basic(&position, static_cast<void*>(&text));
    ::dbus_message_iter_next(&position);
    return text;
}

std::optional<std::uint32_t> numberAt(DBusMessageIter& position) {
    if (::dbus_message_iter_get_arg_type(&position) != DBUS_TYPE_UINT32)
        return std::nullopt;
    std::uint32_t number = 0;
    ::dbus_message_iter_get_basic(&position, &number);
    return number;
}

std::vector<std::string> activeConnectionPaths(DBusConnection& connection) {
    std::vector<std::string> paths;
    const Message reply =
        callProperties(connection, "/org/freedesktop/NetworkManager", "Get", service, "ActiveConnections");
    DBusMessageIter position;
    if (!reply || ::dbus_message_iter_init(reply.get(), &position) == FALSE)
        return paths;
    auto value = entered(position, DBUS_TYPE_VARIANT);
    auto list = value ? entered(*value, DBUS_TYPE_ARRAY) : std::nullopt;
    while (list && paths.size() < mostConnections) {
        auto path = textAt(*list);
        if (!path)
            break;
        paths.push_back(std::move(*path));
    }
    return paths;
}

VPNServiceState serviceState(std::uint32_t activeConnectionState) {
    switch (activeConnectionState) {
    case 1:
        return VPNServiceState::Connecting;
    case 2:
        return VPNServiceState::Connected;
    case 3:
        return VPNServiceState::Disconnecting;
    default:
        return VPNServiceState::Disconnected;
    }
}

void takeProperty(const std::string& name, DBusMessageIter& value, VPNService& vpn) {
    if (name == "Uuid")
        vpn.identifier = textAt(value).value_or("");
    else if (name == "Id")
        vpn.name = textAt(value).value_or("");
    else if (name == "Type")
        vpn.type = textAt(value).value_or("");
    else if (name == "State")
        vpn.state = serviceState(numberAt(value).value_or(0));
}

/// Nothing when the connection has gone since, or is no VPN.
std::optional<VPNService> vpnServiceAt(DBusConnection& connection, const std::string& path) {
    const Message reply = callProperties(connection, path.c_str(), "GetAll", activeConnectionInterface, nullptr);
    DBusMessageIter position;
    if (!reply || ::dbus_message_iter_init(reply.get(), &position) == FALSE)
        return std::nullopt;
    VPNService vpn;
    auto properties = entered(position, DBUS_TYPE_ARRAY);
    while (properties) {
        auto entry = entered(*properties, DBUS_TYPE_DICT_ENTRY);
        if (!entry)
            break;
        const auto name = textAt(*entry);
        auto value = name ? entered(*entry, DBUS_TYPE_VARIANT) : std::nullopt;
        if (value)
            takeProperty(*name, *value, vpn);
    }
    const bool isVPN = vpn.type == "vpn" || vpn.type == "wireguard";
    return isVPN && !vpn.identifier.empty() ? std::optional(vpn) : std::nullopt;
}

} // namespace

std::vector<VPNService> networkManagerServices() {
    std::vector<VPNService> services;
    const Connection connection = connectToSystemBus();
    if (!connection)
        return services;
    for (const std::string& path : activeConnectionPaths(*connection)) {
        if (auto vpn = vpnServiceAt(*connection, path))
            services.push_back(std::move(*vpn));
    }
    return services;
}

} // namespace tolvo::tools
