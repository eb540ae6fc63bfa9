#include "print/print_dialog.h"

#include <gtest/gtest.h>
