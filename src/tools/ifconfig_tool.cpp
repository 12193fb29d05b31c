#include "tools/tool.h"

#include "tools/address_table.h"
#include "tools/interface_listing.h"
#include "tools/link_table.h"
#include "tools/text_output.h"

#include <sys/socket.h>

namespace tolvo::tools {

ToolResult runIfconfig(ToolArguments arguments) {
    if (!arguments.empty())
        return usageError("ifconfig");
    const auto links = readLinks();
    if (!links)
        return systemError("ifconfig", "reading the interfaces", links.error());
    const auto addresses = readAddresses(AF_UNSPEC);
    if (!addresses)
        return systemError("ifconfig", "reading the addresses", addresses.error());
    return succeeded(listInterfaces(*links, *addresses));
}

} // namespace tolvo::tools
