#pragma once

#include "core/async/one_shot.h"
#include "export/diagnostics_collection_sources.h"
#include "platform/services/clipboard.h"
#include "platform/services/file_writing.h"
#include "platform/services/save_dialog.h"

#include <utility>

namespace tolvo::testing {

/// A test that runs until the test of it says otherwise.
struct ScriptedOnDemandTest {
    OnDemandTest ability() {
        return {isRunning, lastErrorMessage, [this] { ++startCount, isRunning.set(true); }, [this] { ++cancelCount; }};
    }

    Published<bool> isRunning;
    Published<std::optional<std::string>> lastErrorMessage;
    int startCount = 0;
    int cancelCount = 0;
};

/// All that a collection reads, in the test's hands.
struct ScriptedCollectionSources {
    DiagnosticsCollectionSources sources() {
        return {"0.1",
                std::nullopt,
                isMonitoringEnabled,
                isBatteryFriendly,
                latestDiagnosticsSnapshot,
                connectionResult,
                connectionErrorMessage,
                captivePortalStatus,
                captivePortalErrorMessage,
                channelScan.ability(),
                channelScanResult,
                speedTest.ability(),
                speedTestResult,
                speedTestPhase};
    }

    Published<bool> isMonitoringEnabled{true}, isBatteryFriendly;
    Published<std::optional<DiagnosticsSnapshot>> latestDiagnosticsSnapshot;
    Published<std::optional<ConnectionPressureResult>> connectionResult;
    Published<std::optional<std::string>> connectionErrorMessage, captivePortalErrorMessage;
    Published<std::optional<CaptivePortalStatus>> captivePortalStatus;
    ScriptedOnDemandTest channelScan, speedTest;
    Published<std::optional<ChannelScanResult>> channelScanResult;
    Published<std::optional<SpeedTestResult>> speedTestResult;
    Published<SpeedTestPhase> speedTestPhase;
};

/// Clipboard, dialog and disk of a user who agrees to everything, unless the test says otherwise.
struct ScriptedExportServices final : Clipboard, SaveDialog, FileWriting {
    bool setText(const std::string& text) override {
        if (doesAccept)
            written = text;
        return doesAccept;
    }
    Task<std::optional<std::filesystem::path>> runSaveDialog(SaveDialogRequest request) override {
        co_return request.fileExtension == "json" ? chosenPath : std::nullopt;
    }
    Task<bool> writeAtomically(std::filesystem::path, std::string bytes) override { co_return setText(bytes); }

    bool doesAccept = true;
    std::optional<std::filesystem::path> chosenPath = "/home/user/report.json";
    std::string written;
};

} // namespace tolvo::testing
