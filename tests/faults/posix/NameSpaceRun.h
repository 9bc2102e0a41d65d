#pragma once

/// A mount name space of its own for one test, in a child process. This process itself never enters one: in a root
/// directory of its own (chroot) it would no longer find its programs afterwards.

/// True in such a child.
bool IsInOwnNameSpace();

/// Runs the current test once more in such a child, which must pass; skips the test where this machine does not allow
/// it.
void RunThisTestInOwnNameSpace();
