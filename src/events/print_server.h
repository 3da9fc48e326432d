// Starts the product's print server, as the installer recorded it in the registry. Called for every job.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

// Starts the configured server when the registry names one; whether it runs already is the server's business.
void StartConfiguredPrintServer();

// Starts the server detached and does not wait for it. A failure is traced.
void StartPrintServer(const char* workingDir, char* commandLine);

} // namespace tintwerk
