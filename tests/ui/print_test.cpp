// Printing with a real printer driver: what comes out of it is read back page by page.
#include "support/dialogs.h"
#include "support/input.h"
#include "support/printed_pages.h"
#include "support/test_printer.h"
#include "support/ui_test.h"

namespace {

class PrintTest : public UiTest {};

constexpr char PrintTitle[] = "Print File";

TEST_F(PrintTest, AShortTextComesOutOnOnePage)
{
    const std::string output = PrintedPath("short");
    const TestPrinter printer(output);
    WriteSettings(std::string(FixedFont) + "PrintDefFont=0\n");
    Program program(WriteScratch("short.txt", "first line\r\nsecond line\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    program.Post(WM_COMMAND, IDM_FILE_PRINT);
    const HWND dialog = WaitForDialog(program, PrintTitle);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(ControlText(dialog, IDC_PRINT_PRINTER), "Test Printer on " + output);
    PressControl(dialog, IDOK);
    ASSERT_TRUE(WaitForPrinted(output));
    const std::vector<PrintedPage> pages = ReadPrintedPages(output);
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(TextsOf(pages[0]), (std::vector<std::string>{"first line", "second line"}));
    const PrintedPicture picture = RenderPage(output, 1);
    EXPECT_EQ(picture.Width, 1275);
    EXPECT_EQ(picture.Height, 1650);
}

} // namespace
