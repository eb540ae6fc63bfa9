#include "print/page_layout.h"

#include <gtest/gtest.h>
