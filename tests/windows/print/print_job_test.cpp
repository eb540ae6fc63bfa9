#include "print/print_job.h"

#include <gtest/gtest.h>
