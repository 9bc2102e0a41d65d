#pragma once

/// The library "jumping_clock", loaded into a process before its own libraries, turns the calendar time of that process
/// by the seconds (64 bits) that a file says, at each look. The steady clock stays.

/// The environment variable that names the file, which must exist when the process first looks at the time.
inline constexpr char jumpingClockVariable[] = "JUMPING_CLOCK_FILE";
