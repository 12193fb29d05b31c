#include "tools/proc_tcp_table.h"

#include "core/text.h"
#include "tools/tcp_table.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <memory>

namespace tolvo::tools {

namespace {

/// The table of a family; nothing for a kernel without that family.
std::string readTable(const char* path) {
    std::string table;
    // Not a stream: this program's start is counted, and streams bring their locales.
    if (const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path, "re"), std::fclose); file) {
        std::array<char, 65536> buffer;
        while (std::feof(file.get()) == 0 && std::ferror(file.get()) == 0)
            table.append(buffer.data(), std::fread(buffer.data(), 1, buffer.size(), file.get()));
    }
    return table;
}

} // namespace

void appendTCPRowsOfProcTable(std::string_view table, std::string_view protocol, std::string& rows) {
    for (const std::string_view line : nonEmptyLines(table)) {
        // Number, local and foreign address, state; the header has none of these.
        const auto columns = tolvo::tokens(line);
        if (columns.size() < 4 || !columns[0].ends_with(':'))
            continue;
        unsigned state = 0;
        const auto end = columns[3].data() + columns[3].size();
        if (std::from_chars(columns[3].data(), end, state, 16).ptr == end)
            rows.append(protocol).append(" 0 0 - - ").append(tcpStateName(state)).append("\n");
    }
}

std::expected<std::string, int> readTCPRowsFromProc() {
    const std::string table = readTable("/proc/net/tcp");
    if (table.empty())
        return std::unexpected(ENOENT);
    std::string rows;
    appendTCPRowsOfProcTable(table, "tcp4", rows);
    appendTCPRowsOfProcTable(readTable("/proc/net/tcp6"), "tcp6", rows);
    return rows;
}

} // namespace tolvo::tools
