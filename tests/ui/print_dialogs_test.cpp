// The dialogs of printing, and jobs that are cancelled or fail.
#include "support/dialogs.h"
#include "support/input.h"
#include "support/printed_pages.h"
#include "support/test_printer.h"
#include "support/ui_test.h"
