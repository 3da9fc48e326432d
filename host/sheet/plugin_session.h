// The plug-in as the core driver holds it: loaded and created through its COM entry points, given the helpers
// and a heap, with its private part of the DEVMODE. Used by the host's sheets and print jobs.
#pragma once

#include <string>
#include <vector>

#include "host/core/core_driver.h"
#include "host/core/selections.h"
#include "platform/coredriver.h"
#include "platform/owners.h"
#include "platform/plugin_module.h"

namespace tintwerk {

class PluginSession
{
public:
    // The plug-in's helper is the core driver's own, or what stands in front of it.
    PluginSession(CoreDriver& core, Selections& selections, IUnknown* helper = nullptr);
    ~PluginSession();
    PluginSession(const PluginSession&) = delete;
    PluginSession& operator=(const PluginSession&) = delete;

    // Everything that the core driver does before it shows or prints anything. Returns an empty text, or what
    // went wrong.
    std::string Start();

    IPrintOemUI2& Plugin() { return *plugin_.Get(); }
    HMODULE Module() const { return module_.Handle(); }
    HANDLE Heap() const { return heap_.Get(); }
    CoreDriver& Core() { return core_; }

    // The private part, as the plug-in reads and writes it.
    std::vector<BYTE>& PrivateDevmode() { return privateDevmode_; }
    // The whole DEVMODE of now: public part, the core driver's, the plug-in's.
    std::vector<BYTE> WholeDevmode(PCWSTR device) const { return core_.MakeDevmode(device, privateDevmode_); }
    // Puts the private part among the selections.
    void KeepPrivateDevmode();

private:
    std::string Create();
    std::string Introduce();
    std::string MakePrivateDevmode();

    CoreDriver& core_;
    Selections& selections_;
    IUnknown* helper_;
    PluginModule module_;
    HeapHandle heap_;
    ComPtr<IPrintOemUI2> plugin_;
    std::vector<BYTE> privateDevmode_;
};

} // namespace tintwerk
