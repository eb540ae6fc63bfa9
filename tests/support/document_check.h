// The document and the plain one, opened and read side by side.
#pragma once

#include "support/plain_document.h"

#include <cstdint>
#include <string>

enum class StepKind {
    ReadLineText, // line First
    SeekLine,     // line First
    HexRowOfLine, // line First
    ReadLine,
    ReadBytesAt, // Second bytes at offset First
    ReadBytes,   // Second bytes
    DiscardParked,
    NoMemory,
    MemoryAgain,
};

struct DocumentStep {
    StepKind Kind;
    std::int32_t First;
    std::int32_t Second;
};

// Sets the document's options; no document is open then.
void StartComparing(const PlainOptions& options);

// Opens content in both, on buffers made anew or reset. What differs, or nothing; also of TakeStep.
std::string OpenBoth(PlainDocument& plain, const Bytes& content, bool reset);

std::string TakeStep(PlainDocument& plain, const DocumentStep& step);

std::string DescribeStep(const DocumentStep& step);
