#include "print/page_setup.h"

#include <gtest/gtest.h>
