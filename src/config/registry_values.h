// The three values that the product's installer leaves in the registry under kRegistryKey. Only ever read.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

inline constexpr char kRegistryKey[] = "SOFTWARE\\Halvaro\\Tintwerk"; // under HKEY_LOCAL_MACHINE, 64-bit view
inline constexpr char kConfigDirValue[] = "ConfigDir";                // ink counters, logos of other makers
inline constexpr char kInstallDirValue[] = "InstallDir";
inline constexpr char kPrintServerValue[] = "PrintServerCmd"; // below the installation
inline constexpr int kRegistryTextBytes = 256;

// Reads a text value of at most 254 characters into a buffer of kRegistryTextBytes. Returns 0 on success, 1
// on failure; the buffer may then hold partial data and must not be used. A success always leaves a
// terminated text.
int ReadRegistryString(const char* valueName, char* buffer);

// The same for kConfigDirValue, read by the page that shows an OEM logo.
int ReadConfigDir(char* buffer);

} // namespace tintwerk
