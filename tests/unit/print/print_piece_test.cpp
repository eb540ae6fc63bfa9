#include "print/print_piece.h"

#include <gtest/gtest.h>
