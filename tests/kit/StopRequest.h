#pragma once

/// Interrupts this process like a user at its terminal; false if the system cannot do that here.
[[nodiscard]] bool AskThisProcessToStop();
