#include "support/ui_test.h"
