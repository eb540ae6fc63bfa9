#include "real_files/damaged_files.h"

#include "document/pe_image.h"
#include "real_files/facts.h"
#include "real_files/sample.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>

namespace {

constexpr std::size_t LongestCut = 4096;

struct Range {
    std::size_t Offset;
    std::size_t Count;
};

struct Order {
    std::string Path;
    std::vector<Range> Ranges;
};

Order ReadOrder(const std::string& line)
{
    std::istringstream fields(line);
    Order order;
    std::getline(fields, order.Path, '\t');
    for (std::string field; std::getline(fields, field, '\t');) {
        unsigned long offset = 0;
        unsigned long count = 0;
        if (sscanf(field.c_str(), "%lu+%lu", &offset, &count) == 2) {
            order.Ranges.push_back({offset, count});
        }
    }
    return order;
}

bool Terminated(const char* text, std::size_t size)
{
    return memchr(text, 0, size) != nullptr;
}

// What is wrong with the facts, or nothing.
const char* Fault(const Facts& facts, std::size_t size)
{
    const FileInfo& info = facts.Document;
    if (info.FileType < NotRecognised || info.FileType > CompressedFile) {
        return "no such type";
    }
    if (info.Size != static_cast<std::int32_t>(size)) {
        return "another size";
    }
    if (info.ZipDirOffset < 0 || info.ZipDirOffset > std::max(info.Size - 22, 0)) {
        return "an archive's end that is not in the file";
    }
    if (facts.Pane.FileType != info.FileType || facts.Pane.ZipDirOffset != info.ZipDirOffset) {
        return "another type without details";
    }
    if (!Terminated(Details.FileDescription, sizeof Details.FileDescription) ||
        !Terminated(Details.FileVersionText, sizeof Details.FileVersionText) ||
        !Terminated(Details.CompanyNameText, sizeof Details.CompanyNameText)) {
        return "a text without an end";
    }
    if (Details.ImportCount < 0 || Details.ImportCount > UINT16_MAX) {
        return "an impossible number of imports";
    }
    if (facts.Imports.size() > static_cast<std::size_t>(MostImports)) {
        return "too many imports";
    }
    return nullptr;
}

// A file, its damage and what came of it so far.
struct Damage {
    Order What;
    std::string Outcome;
};

bool IdentifyCopy(Damage& damage, const Bytes& content, const char* kind, std::size_t number)
{
    Facts facts;
    const char* fault =
        IdentifyAsProgramDoes(PutSample(content), facts) ? Fault(facts, content.size()) : "cannot be opened";
    if (fault != nullptr) {
        damage.Outcome = std::string(kind) + std::to_string(number) + ": " + fault;
        return false;
    }
    damage.Outcome += std::to_string(facts.Document.FileType) + ":" + std::to_string(Details.ImportCount) + " ";
    return true;
}

bool Cut(Damage& damage, const Bytes& whole)
{
    const std::size_t longest = std::min(whole.size(), LongestCut);
    for (std::size_t size = 0; size <= longest; ++size) {
        const Bytes copy(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        if (!IdentifyCopy(damage, copy, "cut at ", size)) {
            return false;
        }
    }
    return true;
}

bool FlipBits(Damage& damage, Bytes& content, const Range& range)
{
    const std::size_t end = std::min(content.size(), range.Offset + range.Count);
    for (std::size_t bit = range.Offset * 8; bit < end * 8; ++bit) {
        const std::uint8_t mask = static_cast<std::uint8_t>(1 << bit % 8);
        content[bit / 8] ^= mask;
        if (!IdentifyCopy(damage, content, "flipped bit ", bit)) {
            return false;
        }
        content[bit / 8] ^= mask;
    }
    return true;
}

bool CutAndFlip(Damage& damage, Bytes& content)
{
    return Cut(damage, content) && std::all_of(damage.What.Ranges.begin(), damage.What.Ranges.end(),
                                               [&](const Range& range) { return FlipBits(damage, content, range); });
}

} // namespace

bool IdentifyDamaged(const std::string& line)
{
    Damage damage = {ReadOrder(line), ""};
    std::ifstream file(damage.What.Path, std::ios::binary);
    if (!file) {
        printf("%s\tcannot be read\n", damage.What.Path.c_str());
        return false;
    }
    Bytes content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const bool good = CutAndFlip(damage, content);
    printf("%s\t%s\n", damage.What.Path.c_str(), damage.Outcome.c_str());
    return good;
}
