#include "view/view_state.h"

#include "document/document_state.h"

ViewState View;
ViewSettings ViewOptions;

bool AnyLock()
{
    return View.LockTopLine != 0 || View.LockRows != 0 || View.LockColStart != 0 || View.LockCols != 0;
}

void ForgetHighlight()
{
    View.HiliteLine = 0;
    View.HiliteLen = 0;
}

std::int32_t RowsOnScreen()
{
    return View.ClientHeight / View.LineHeight;
}

std::int32_t RowsTouched()
{
    return (View.ClientHeight + View.LineHeight - 1) / View.LineHeight;
}

std::int32_t HexRowCount()
{
    // Divided before it is rounded up: the size may be close to the largest 32-bit number.
    return Document.FileSize / HexRowBytes + (Document.FileSize % HexRowBytes != 0);
}

std::int32_t RowCount()
{
    return View.HexMode ? HexRowCount() : Document.LineCount;
}
