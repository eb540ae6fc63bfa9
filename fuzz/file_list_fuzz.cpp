// The file list, compared step by step with a plain one.
//
// Input: operations, each a byte for its kind and then what it takes. Generated names and directories fill
// the list up to its limits with a short input.
#include "document/file_list.h"
#include "fuzz_input.h"
#include "support/test_port.h"

#include <cstring>
#include <vector>

namespace {

// What the list holds, kept in the plainest way.
struct PlainList {
    struct Entry {
        std::string Directory;
        std::string Name;
    };
    std::vector<Entry> Entries;
    std::vector<std::string> Directories;
    std::size_t EntryBytes = 0;
    std::size_t DirectoryBytes = 0;
    bool HasStores = false;
    bool Trimmed = false; // since the last addition
    bool Full = false;
    std::int32_t Position = 0;
    std::int32_t Total = 0;
    std::int32_t Adjust = 0;
};

constexpr std::size_t LongestPath = 259;
constexpr int MostAdditions = 2600; // of one input, so that none takes long

PlainList Plain;
int Additions;
bool NoMemory;
bool NoShrinking;

std::size_t SplitAt(const std::string& path)
{
    for (std::size_t i = path.size(); i > 1; --i) {
        if (path[i - 1] == '\\' || path[i - 1] == ':') {
            return i;
        }
    }
    return 0;
}

PlainList::Entry PartsOf(const std::string& directory, const std::string& name)
{
    if (!name.empty()) {
        const bool slash = !directory.empty() && directory.back() == '\\';
        return {directory.substr(0, directory.size() - slash), name};
    }
    const std::size_t split = SplitAt(directory);
    const bool slash = split > 0 && directory[split - 1] == '\\';
    return {directory.substr(0, split - slash), directory.substr(split)};
}

std::string PathOf(const PlainList::Entry& entry)
{
    return entry.Directory.empty() ? entry.Name : entry.Directory + "\\" + entry.Name;
}

bool EnterDirectory(const std::string& directory)
{
    for (const std::string& known : Plain.Directories) {
        if (known == directory) {
            return true;
        }
    }
    if (Plain.Directories.size() >= 255 || Plain.DirectoryBytes + directory.size() + 1 >= 10240) {
        return false;
    }
    Plain.Directories.push_back(directory);
    Plain.DirectoryBytes += directory.size() + 1;
    return true;
}

ListAddition AddToPlain(const std::string& directory, const std::string& name, bool memory)
{
    if (!Plain.Full && !memory) {
        Plain.Full = true;
    }
    if (Plain.Full) {
        return ListAddition::Rejected;
    }
    Plain.HasStores = true;
    Plain.Trimmed = false;
    const PlainList::Entry entry = PartsOf(directory, name);
    if (entry.Name.size() > 255 || entry.Directory.size() + 1 + entry.Name.size() > LongestPath) {
        return ListAddition::Rejected;
    }
    if (!EnterDirectory(entry.Directory)) {
        Plain.Full = true;
        return ListAddition::Rejected;
    }
    Plain.Entries.push_back(entry);
    Plain.EntryBytes += entry.Name.size() + 3;
    Plain.Full = Plain.EntryBytes > 32000 || Plain.Entries.size() >= 2000;
    return Plain.Full ? ListAddition::AddedLast : ListAddition::Added;
}

// Whether an addition has the memory it asks for, as far as that can be told from outside: failing is the
// number of the allocation that fails, 0 for none. A list that was trimmed may or may not ask for more.
bool HasMemory(int failing, bool becameFull)
{
    if (!Plain.HasStores) {
        return !NoMemory && (failing < 1 || failing > 3);
    }
    return !(Plain.Trimmed && (NoMemory || failing > 0) && becameFull);
}

bool HasSmallStore()
{
    return FileList.EntryStore != nullptr &&
           TestPort::ObjectBytes(FileList.EntryStore) < static_cast<std::size_t>(EntryStoreBytes);
}

void Append(const std::string& directory, const std::string& name, int failing)
{
    if (++Additions > MostAdditions) {
        return;
    }
    const bool needsMemory = NoMemory && HasSmallStore();
    TestPort::FailAllocation(failing);
    const ListAddition addition = AppendToFileList(directory.c_str(), name.c_str());
    TestPort::FailAllocation(0);
    const bool lostMemory = FileList.ListFull && addition == ListAddition::Rejected;
    Require(!needsMemory || lostMemory, "a trimmed list does not grow without memory");
    Require(AddToPlain(directory, name, HasMemory(failing, lostMemory)) == addition, "what became of the addition");
}

void CheckCounts()
{
    Require(FileListSize() == static_cast<std::int32_t>(Plain.Entries.size()), "entries");
    Require(FileList.ListFull == Plain.Full, "the list is full");
    Require(FileList.DirCount == static_cast<std::int32_t>(Plain.Directories.size()), "directories");
    Require(FileList.EntryBytes == static_cast<std::int32_t>(Plain.EntryBytes), "bytes of entries");
    Require(FileList.DirectoryBytes == static_cast<std::int32_t>(Plain.DirectoryBytes), "bytes of directories");
    Require(FileList.ListPosition == Plain.Position && FileList.ListTotal == Plain.Total, "where the walk is");
    Require(TestPort::LiveObjects() == (Plain.HasStores ? 3 : 0), "three stores or none");
    Require(TestPort::Misuses() == 0, "memory is used by its rules");
}

void CheckEntry(std::int32_t position)
{
    char path[MaxPathSize];
    char directory[MaxPathSize];
    char name[MaxPathSize];
    memset(path, 'x', sizeof path);
    memset(directory, 'x', sizeof directory);
    memset(name, 'x', sizeof name);
    const bool exists = position >= 1 && position <= static_cast<std::int32_t>(Plain.Entries.size());
    Require(GetListEntry(position, path) == exists, "a position has a path");
    Require(GetListEntry(position, directory, name) == exists, "a position has a directory and a name");
    const PlainList::Entry entry = exists ? Plain.Entries[static_cast<std::size_t>(position - 1)] : PlainList::Entry();
    Require(entry.Directory == directory && entry.Name == name, "directory and name");
    Require(PathOf(entry) == path, "path");
}

// All of them, or of many a few hundred, the last ones among them.
void CheckEntries()
{
    const std::int32_t step = FileListSize() / 200 + 1;
    for (std::int32_t position = FileListSize() + 1; position >= 0; position -= step) {
        CheckEntry(position);
        CheckEntry(position - 1);
    }
}

void AppendNames(FuzzInput& input)
{
    const std::uint32_t count = input.Number16() % 2100;
    const std::string directory = "c:\\d" + std::to_string(input.Byte());
    const std::size_t length = input.Byte();
    for (std::uint32_t i = 0; i < count; ++i) {
        std::string name = std::to_string(i);
        name.resize(name.size() < length ? length : name.size(), 'n');
        Append(directory, name, 0);
    }
    CheckCounts();
}

void AppendDirectories(FuzzInput& input)
{
    const int count = input.Byte() + 1;
    const std::size_t length = input.Number16() % 262;
    const std::string prefix(1, static_cast<char>('a' + input.Byte() % 26));
    for (int i = 0; i < count; ++i) {
        std::string directory = prefix + ":\\" + std::to_string(i);
        directory.resize(directory.size() < length ? length : directory.size(), 'd');
        Append(directory + "\\f", "", 0);
    }
    CheckCounts();
}

void Trim()
{
    TrimFileList();
    if (Plain.Entries.empty()) {
        return;
    }
    Plain.Trimmed = true;
    if (!NoShrinking) {
        Require(TestPort::ObjectBytes(FileList.EntryStore) == Plain.EntryBytes, "entries are trimmed");
        Require(TestPort::ObjectBytes(FileList.DirectoryStore) == Plain.DirectoryBytes, "directories are trimmed");
    }
}

void Remove(std::int32_t position)
{
    RemoveListEntry(position);
    if (position >= 1 && position <= static_cast<std::int32_t>(Plain.Entries.size())) {
        Plain.Entries.erase(Plain.Entries.begin() + position - 1);
    }
}

void Clear()
{
    ClearFileList();
    Plain = PlainList();
    Require(TestPort::LiveObjects() == 0, "an empty list keeps no memory");
}

void CheckWalk()
{
    Require(HasNextFile() == (Plain.Position < Plain.Total), "a next file");
    Require(HasPreviousFile() == (Plain.Total > 0 && Plain.Position + Plain.Adjust > 1), "a previous file");
    if (HasNextFile()) {
        Require(NextPosition() == Plain.Position + 1, "where the next file is");
    }
    if (HasPreviousFile()) {
        const std::int32_t previous = Plain.Position + Plain.Adjust - 1;
        Require(PreviousPosition() == (previous < Plain.Total ? previous : Plain.Total), "where the previous file is");
    }
}

// The current file was deleted.
void RemoveCurrent()
{
    if (Plain.Total == 0 || Plain.Position < 1) {
        return;
    }
    Remove(Plain.Position);
    --FileList.ListTotal;
    --FileList.ListPosition;
    FileList.ListAdjust = 1;
    --Plain.Total;
    --Plain.Position;
    Plain.Adjust = 1;
}

void Walk(std::int32_t position)
{
    WalkFileList(position);
    Plain.Position = position;
    Plain.Total = static_cast<std::int32_t>(Plain.Entries.size());
    Plain.Adjust = 0;
}

void TakeStep(FuzzInput& input)
{
    switch (input.Byte() % 14) {
    case 0: {
        const std::string directory = input.Text();
        Append(directory, input.Text(), 0);
        break;
    }
    case 1: Append(input.Text(), "", 0); break;
    case 2: AppendNames(input); break;
    case 3: AppendDirectories(input); break;
    case 4: Trim(); break;
    case 5: Remove(static_cast<std::int32_t>(input.Number16())); break;
    case 6: CheckEntry(static_cast<std::int32_t>(input.Number16())); break;
    case 7: Clear(); break;
    case 8: {
        const int failing = input.Byte() % 5;
        Append(input.Text(), "f", failing);
        break;
    }
    case 9:
        NoMemory = input.Byte() % 2 != 0;
        TestPort::FailAllAllocations(NoMemory);
        break;
    case 10:
        NoShrinking = input.Byte() % 2 != 0;
        TestPort::FailShrinking(NoShrinking);
        break;
    case 11: Walk(static_cast<std::int32_t>(input.Number16() % 2002)); break;
    case 12: RemoveCurrent(); break;
    case 13: {
        const std::size_t length = input.Number16() % 600;
        Append("c:\\" + std::string(length, input.Byte() % 2 == 0 ? 'p' : '\\') + input.Text(), "", 0);
        break;
    }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    ClearFileList();
    TestPort::Reset();
    Plain = PlainList();
    Additions = 0;
    NoMemory = NoShrinking = false;
    while (!input.AtEnd()) {
        TakeStep(input);
        CheckCounts();
        CheckWalk();
    }
    CheckEntries();
    Clear();
    return 0;
}
