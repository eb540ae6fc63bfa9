#include "search/find_state.h"

FindState Find;
