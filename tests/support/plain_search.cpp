#include "support/plain_search.h"
