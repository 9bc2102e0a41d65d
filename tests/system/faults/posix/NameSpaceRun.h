#pragma once

/// Runs one test in a child process with its own mount name space. The parent never enters one: after a chroot it would
/// no longer find its programs.

/// True in such a child.
bool IsInOwnNameSpace();

/// Runs the current test again in such a child, which must pass; skips the test if the machine does not allow it.
void RunThisTestInOwnNameSpace();
