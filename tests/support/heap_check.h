// Heaps that a test has damaged.
#pragma once

namespace tintwerk {

// False when a block of one of the process's heaps was written past its end or after it was freed, as far as the
// system checks that: all of it under Wine with WINEDEBUG=warn+heap. Elsewhere AddressSanitizer looks.
bool HeapsAreSound();

} // namespace tintwerk
