#pragma once

#include "platform/linux/nl80211/netlink_messages.h"
#include "platform/linux/nl80211/nl80211_querying.h"

#include <memory>
#include <vector>

struct nl_sock;
struct nl_msg;

namespace tolvo {

/// Keeps one generic netlink socket for questions, made when it is first needed and anew after any trouble with it, and
/// makes one for each watch of the scans. No operation that reads needs a privilege.
class Nl80211Connection final : public Nl80211Querying {
public:
    explicit Nl80211Connection(MainLoop& loop);
    ~Nl80211Connection() override;

    std::expected<void, int> list(std::uint8_t command, std::optional<std::uint32_t> interfaceIndex,
                                  const OnReply& onReply) override;
    std::expected<void, int> triggerScan(std::uint32_t interfaceIndex) override;
    std::expected<LoopRegistration, int> watchScans(OnScanEvent onEvent) override;

private:
    struct SocketCloser {
        void operator()(nl_sock* socket) const;
    };
    struct MessageFreer {
        void operator()(nl_msg* message) const;
    };
    using Socket = std::unique_ptr<nl_sock, SocketCloser>;
    using Message = std::unique_ptr<nl_msg, MessageFreer>;

    static std::expected<Socket, int> openSocket();
    std::expected<void, int> openForQuestions();
    Message newMessage(std::uint8_t command, int flags, std::optional<std::uint32_t> interfaceIndex) const;
    std::expected<void, int> exchange(nl_msg* message, const OnReply& onReply);
    std::expected<void, int> receiveReply(std::uint32_t sequence, const OnReply& onReply);
    std::expected<std::size_t, int> receive(int descriptor, int flags);
    void receiveEvents(int descriptor, const OnScanEvent& onEvent);

    MainLoop& loop_;
    Socket socket_;
    int family_ = 0;
    std::vector<std::byte> buffer_;
};

} // namespace tolvo
