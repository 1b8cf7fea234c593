#pragma once

/// While it is not 0, memory for the program's own code (not for Qt's) runs out at that request. Replaces new and
/// delete of the whole test.
extern int memoryEndsAt;
