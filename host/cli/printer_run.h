// The printer that a command speaks of: its PPD, the selections kept for it, the core driver stand-in and a
// spooler that knows it, set up from the command line. Used by every command that runs the plug-in.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/cli/arguments.h"
#include "host/cli/printer_entry.h"
#include "host/cli/product_registry.h"
#include "host/cli/program.h"
#include "host/core/core_driver.h"
#include "host/core/selections.h"
#include "host/ppd/ppd_reader.h"
#include "host/ppd/wide_text.h"
#include "host/sheet/plugin_session.h"
#include "platform/file_lock.h"

namespace tintwerk {

// The options that all these commands share, with those of one command behind them.
std::vector<OptionRow> PrinterOptions(std::span<const OptionRow> own = {});

class PrinterRun
{
public:
    // Throws a CommandError when the PPD or the selections cannot be used, or when another process may change
    // the selections too. A run that `keeps` nothing needs not wait for others.
    PrinterRun(const Arguments& arguments, Output& output, bool keeps = true);
    ~PrinterRun();
    PrinterRun(const PrinterRun&) = delete;
    PrinterRun& operator=(const PrinterRun&) = delete;

    // Loads and starts the plug-in; throws when that fails.
    PluginSession& StartPlugin();

    const Ppd& Description() const { return *ppd_; }
    CoreDriver& Core() { return *core_; }
    const WideString& Name() const { return name_; }
    HANDLE Printer() const { return printer_->Handle(); }
    bool IsGerman() const { return german_; }

    // Writes the selections of now to the store. Kept: they stand there; else KeepProblem says why not, and
    // is empty while nothing was to be kept.
    void Keep();
    bool Kept() const { return kept_; }
    const std::string& KeepProblem() const { return keepProblem_; }
    const std::filesystem::path& StoreFile() const { return storeFile_; }
    // What the kept selections changed since the start; with the private DEVMODE's apply counts.
    std::vector<SelectionChange> Changes() const { return ChangesBetween(firstSelections_, keptSelections_); }
    std::pair<DWORD, DWORD> ApplyCounts() const { return {firstApplyCount_, keptApplyCount_}; }
    // Selections as kept last, or of the start.
    const SelectedOptions& KeptSelections() const { return keptSelections_; }

private:
    void Read(const Arguments& arguments);
    void LockStore();
    void LoadSelections();
    PaperSize CustomSize(const Arguments& arguments);
    DWORD ApplyCount() const;

    Output& output_;
    bool traces_;
    std::unique_ptr<Ppd> ppd_;
    std::string ppdFile_;
    PpdReadOptions readOptions_;
    std::filesystem::path storeFile_;
    FileLock lock_;
    Selections selections_;
    SelectedOptions setAside_; // kept selections that this run pretends otherwise
    std::unique_ptr<CoreDriver> core_;
    std::unique_ptr<PluginSession> session_;
    WideString name_;
    std::unique_ptr<SpooledPrinter> printer_;
    std::optional<ProductValue> configDirectory_;
    bool german_ = false;
    bool kept_ = false;
    std::string keepProblem_;
    DWORD firstApplyCount_ = 0;
    DWORD keptApplyCount_ = 0;
    SelectedOptions firstSelections_, keptSelections_;
};

} // namespace tintwerk
