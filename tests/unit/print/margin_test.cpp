#include "print/margin.h"

#include <gtest/gtest.h>
