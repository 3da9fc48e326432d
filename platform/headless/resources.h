// Compiled resources (.res) of the headless platform: the ones embedded in the program, and files on disk.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/win32.h"

namespace tintwerk::headless {

// A type or a name: a number, or an upper-case text.
struct ResourceId
{
    WORD number = 0;
    std::basic_string<WCHAR> text;

    // From what the platform's functions take: MAKEINTRESOURCEW, "#123", or a text.
    static ResourceId From(LPCWSTR id);
    bool operator==(const ResourceId&) const = default;
};

struct Resource
{
    ResourceId type;
    ResourceId name;
    std::span<const BYTE> data;
};

// The data of the resources point into the bytes. Stops at the first entry that is not whole.
std::vector<Resource> ParseResources(std::span<const BYTE> bytes);

// The resources that are linked into this program; empty when there are none.
const std::vector<Resource>& EmbeddedResources();

// Null when there is none; the first of several languages.
const Resource* FindResourceIn(const std::vector<Resource>& resources, const ResourceId& type,
                               const ResourceId& name);

// The plug-in as a module of this process, whether or not it is loaded.
HMODULE PluginHandle();

} // namespace tintwerk::headless
