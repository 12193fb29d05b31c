#pragma once

#include "platform/services/process_service.h"
#include "platform/services/workspace.h"

#include <filesystem>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

/// The program in which the user's desktop sets what is started at login.
class LoginItemSettingsProgram {
public:
    LoginItemSettingsProgram(ProcessService& processService, Workspace& workspace)
        : processService_(processService), workspace_(workspace) {}

    /// The desktops stand between colons. Where none of them has such a program, the folder of the entries is opened.
    void open(std::string_view desktops, const std::filesystem::path& autostartFolder);

private:
    bool start(const std::string& program, const std::vector<std::string>& arguments);

    ProcessService& processService_;
    Workspace& workspace_;
    std::list<std::unique_ptr<RunningProcess>> running_;
};

} // namespace tolvo
