#include "print/printer_selection.h"

#include <gtest/gtest.h>
