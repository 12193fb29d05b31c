#include "platform/linux/nl80211/nl80211_connection.h"

#include <linux/nl80211.h>
#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>
#include <netlink/msg.h>
#include <netlink/socket.h>

#include <sys/socket.h>
#include <sys/time.h>

#include <cerrno>

namespace tolvo {

namespace {

constexpr const char* familyName = "nl80211";

/// The kernel fills dumps up to this size if it is given so much (NETLINK's max_recvmsg_len), so that no message is
/// cut short and a reply comes in few pieces.
constexpr std::size_t bufferSize = 32'768;

/// The kernel answers before the sending of a question returns; an answer that isn't there by then hardly ever comes.
constexpr timeval receiveTimeout{.tv_sec = 0, .tv_usec = 200'000};

/// These speak of an interface or of what its driver can do. Anything else puts the socket itself in doubt, ENOENT too:
/// the family's number is gone when its module was reloaded.
bool isAboutInterface(int error) {
    return error == ENODEV || error == EOPNOTSUPP || error == ENETDOWN || error == EPERM || error == EBUSY ||
           error == EINVAL;
}

bool isEvent(std::uint8_t command) {
    return command == NL80211_CMD_TRIGGER_SCAN || command == NL80211_CMD_NEW_SCAN_RESULTS ||
           command == NL80211_CMD_SCAN_ABORTED;
}

} // namespace

void Nl80211Connection::SocketCloser::operator()(nl_sock* socket) const {
    nl_socket_free(socket);
}

void Nl80211Connection::MessageFreer::operator()(nl_msg* message) const {
    nlmsg_free(message);
}

Nl80211Connection::Nl80211Connection(MainLoop& loop) : loop_(loop), buffer_(bufferSize) {}

Nl80211Connection::~Nl80211Connection() = default;

std::expected<Nl80211Connection::Socket, int> Nl80211Connection::openSocket() {
    Socket socket(nl_socket_alloc());
    if (!socket)
        return std::unexpected(ENOMEM);
    if (genl_connect(socket.get()) != 0)
        return std::unexpected(EPROTONOSUPPORT);
    // A single question for the family's number that gets no answer would make the library refuse all later answers.
    nl_socket_disable_seq_check(socket.get());
    // Before the first question, the one for the family's number, is asked.
    setsockopt(nl_socket_get_fd(socket.get()), SOL_SOCKET, SO_RCVTIMEO, &receiveTimeout, sizeof receiveTimeout);
    return socket;
}

std::expected<void, int> Nl80211Connection::openForQuestions() {
    if (!socket_) {
        auto socket = openSocket();
        if (!socket)
            return std::unexpected(socket.error());
        socket_ = std::move(*socket);
        family_ = 0;
    }
    // Without Wi-Fi there is no such family, and each poll asks whether it has come.
    if (family_ <= 0)
        family_ = genl_ctrl_resolve(socket_.get(), familyName);
    // The library says the same of a question that failed.
    return family_ > 0 ? std::expected<void, int>() : std::unexpected(EPROTONOSUPPORT);
}

Nl80211Connection::Message Nl80211Connection::newMessage(std::uint8_t command, int flags,
                                                         std::optional<std::uint32_t> interfaceIndex) const {
    Message message(nlmsg_alloc());
    if (!message || !genlmsg_put(message.get(), NL_AUTO_PORT, NL_AUTO_SEQ, family_, 0, flags, command, 0))
        return nullptr;
    if (interfaceIndex && nla_put_u32(message.get(), NL80211_ATTR_IFINDEX, *interfaceIndex) != 0)
        return nullptr;
    return message;
}

std::expected<void, int> Nl80211Connection::list(std::uint8_t command, std::optional<std::uint32_t> interfaceIndex,
                                                 const OnReply& onReply) {
    if (const auto opened = openForQuestions(); !opened)
        return opened;
    const Message message = newMessage(command, NLM_F_DUMP, interfaceIndex);
    return message ? exchange(message.get(), onReply) : std::unexpected(ENOMEM);
}

std::expected<void, int> Nl80211Connection::triggerScan(std::uint32_t interfaceIndex) {
    if (const auto opened = openForQuestions(); !opened)
        return opened;
    const Message message = newMessage(NL80211_CMD_TRIGGER_SCAN, NLM_F_ACK, interfaceIndex);
    nlattr* const names = message ? nla_nest_start(message.get(), NL80211_ATTR_SCAN_SSIDS) : nullptr;
    // The empty name asks every access point to answer.
    if (!names || nla_put(message.get(), 1, 0, nullptr) != 0)
        return std::unexpected(ENOMEM);
    nla_nest_end(message.get(), names);
    return exchange(message.get(), [](NetlinkAttributes) {});
}

std::expected<void, int> Nl80211Connection::exchange(nl_msg* message, const OnReply& onReply) {
    if (nl_send_auto(socket_.get(), message) < 0) {
        socket_.reset();
        return std::unexpected(EIO);
    }
    const auto received = receiveReply(nlmsg_hdr(message)->nlmsg_seq, onReply);
    if (!received && !isAboutInterface(received.error()))
        socket_.reset();
    return received;
}

std::expected<void, int> Nl80211Connection::receiveReply(std::uint32_t sequence, const OnReply& onReply) {
    bool wasInterrupted = false;
    while (true) {
        const auto size = receive(nl_socket_get_fd(socket_.get()), 0);
        if (!size)
            return std::unexpected(size.error());
        Bytes datagram(buffer_.data(), *size);
        while (const auto message = takeNetlinkMessage(datagram)) {
            if (message->sequence != sequence)
                continue;
            wasInterrupted = wasInterrupted || (message->flags & NLM_F_DUMP_INTR) != 0;
            if (const auto error = message->reportedError()) {
                // A list that changed while it was told is asked for anew by who wants it whole.
                const int result = *error == 0 && wasInterrupted ? EAGAIN : *error;
                return result == 0 ? std::expected<void, int>() : std::unexpected(result);
            }
            if (const auto generic = parseGenericMessage(message->payload); generic && message->type == family_)
                onReply(NetlinkAttributes(generic->attributes));
        }
    }
}

std::expected<std::size_t, int> Nl80211Connection::receive(int descriptor, int flags) {
    ssize_t size = 0;
    do {
        size = recv(descriptor, buffer_.data(), buffer_.size(), flags | MSG_TRUNC);
    } while (size < 0 && errno == EINTR);
    if (size < 0)
        return std::unexpected(errno == EAGAIN ? ETIMEDOUT : errno);
    if (size == 0 || static_cast<std::size_t>(size) > buffer_.size())
        return std::unexpected(EBADMSG);
    return static_cast<std::size_t>(size);
}

std::expected<LoopRegistration, int> Nl80211Connection::watchScans(OnScanEvent onEvent) {
    auto socket = openSocket();
    if (!socket)
        return std::unexpected(socket.error());
    const int group = genl_ctrl_resolve_grp(socket->get(), familyName, NL80211_MULTICAST_GROUP_SCAN);
    if (group < 0 || nl_socket_add_membership(socket->get(), group) != 0)
        return std::unexpected(ENOENT);
    const int descriptor = nl_socket_get_fd(socket->get());
    auto watch = loop_.watch(descriptor, DescriptorEvent::Readable,
                             [this, descriptor, onEvent = std::move(onEvent)] { receiveEvents(descriptor, onEvent); });
    // The watch goes before the socket that it is on.
    return LoopRegistration([socket = std::move(*socket), watch = std::move(watch)]() mutable {
        watch.reset();
        socket.reset();
    });
}

void Nl80211Connection::receiveEvents(int descriptor, const OnScanEvent& onEvent) {
    // One datagram a turn: the handler may end the watch, and the loop comes again for the next one.
    const auto size = receive(descriptor, MSG_DONTWAIT);
    if (!size)
        return;
    const std::vector<std::byte> received(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(*size));
    Bytes datagram(received);
    while (const auto message = takeNetlinkMessage(datagram)) {
        const auto generic = parseGenericMessage(message->payload);
        if (generic && isEvent(generic->command))
            onEvent(generic->command, NetlinkAttributes(generic->attributes));
    }
}

} // namespace tolvo
