// The status line's help for menu items.
#pragma once

// What the Launch item would start.
enum class ProgramKind { None, OfWindows, OfDos };

// The number of the string that explains command id, also one of the system menu; 0 for none. program is
// the kind of the current file.
unsigned CommandHelp(unsigned id, ProgramKind program);
