// Compiled resources (.res) of the headless platform, whose types and names are numbers: the ones embedded in
// the program, and files on disk.
#pragma once

#include <span>
#include <vector>

#include "platform/win32.h"

namespace tintwerk::headless {

struct Resource
{
    WORD type;
    WORD name;
    std::span<const BYTE> data;
};

// The data of the resources point into the bytes. Stops at the first entry that is not whole, and passes over
// texts as types and names.
std::vector<Resource> ParseResources(std::span<const BYTE> bytes);

// The resources that are linked into this program; empty when there are none.
const std::vector<Resource>& EmbeddedResources();

// The plug-in as a module of this process, whether or not it is loaded.
HMODULE PluginHandle();

} // namespace tintwerk::headless
