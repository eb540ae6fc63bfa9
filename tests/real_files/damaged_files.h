// Identifying damaged copies of a file: nothing may crash or hang, and what is found out stays in its bounds.
#pragma once

#include <string>

// order: a file's path, then, after a tab each, ranges of its bytes as OFFSET+COUNT. Identifies the file cut
// at every length up to 4096 and to its own, then with every bit of the ranges flipped, one at a time. Prints
// the path and, after a tab, TYPE:IMPORTS for each damaged copy; but where something is out of its bounds the
// first such damage instead, and then returns false.
bool IdentifyDamaged(const std::string& order);
