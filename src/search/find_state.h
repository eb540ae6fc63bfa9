// The search that can be repeated.
#pragma once

struct FindState {
    bool FindSucceeded = false; // the last search found something; only then it can be repeated
};

extern FindState Find;
