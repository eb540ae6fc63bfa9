#include "print/header_footer.h"

#include <gtest/gtest.h>
