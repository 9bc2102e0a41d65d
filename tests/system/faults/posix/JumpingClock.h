#pragma once

/// The library "jumping_clock", preloaded into a process, shifts its calendar clock by the seconds (64 bits) in a file,
/// read at each call. The steady clock is unaffected.

/// The environment variable that names the file. The file must exist when the process first reads the time.
inline constexpr char jumpingClockVariable[] = "JUMPING_CLOCK_FILE";
