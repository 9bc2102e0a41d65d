#pragma once

/// Asks this process to stop as a person at its terminal would; false when the system offers no way here.
[[nodiscard]] bool AskThisProcessToStop();
