// identify_files LIST
// identify_files --damage LIST
//
// Says of each file named in LIST, a path per line, what the program finds out about it: a line of values
// with tabs between them. With --damage it identifies damaged copies of the files instead, and says what
// went wrong; see damaged_files.h. The status is 0 when every file could be read and nothing went wrong.
#include "document/block_cache.h"
#include "real_files/damaged_files.h"
#include "real_files/facts.h"

#include <cstdio>
#include <cstring>
#include <fstream>

namespace {

void PrintText(const char* text)
{
    putchar('\t');
    for (; *text != '\0'; ++text) {
        const unsigned char byte = static_cast<unsigned char>(*text);
        if (byte < ' ' || byte > '~' || byte == '\\') {
            printf("\\x%02x", byte);
        } else {
            putchar(byte);
        }
    }
}

void PrintInfo(const FileInfo& info)
{
    printf("\t%d\t%d\t%d", static_cast<int>(info.Size), info.FileType, static_cast<int>(info.ZipDirOffset));
}

bool PrintFacts(const char* path)
{
    Facts facts;
    printf("%s", path);
    if (!IdentifyAsProgramDoes(path, facts)) {
        printf("\tcannot be opened\n");
        return false;
    }
    PrintInfo(facts.Pane);
    PrintInfo(facts.Document);
    printf("\t%d\t%d", Details.ImageMachine, static_cast<int>(Details.ImportCount));
    PrintText(Details.FileDescription);
    PrintText(Details.FileVersionText);
    PrintText(Details.CompanyNameText);
    for (const std::string& name : facts.Imports) {
        PrintText(name.c_str());
    }
    putchar('\n');
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    const bool damage = argc == 3 && strcmp(argv[1], "--damage") == 0;
    if (argc != 2 && !damage) {
        fprintf(stderr, "usage: identify_files [--damage] LIST\n");
        return 2;
    }
    std::ifstream list(argv[argc - 1]);
    if (!list) {
        fprintf(stderr, "identify_files: cannot read %s\n", argv[argc - 1]);
        return 2;
    }
    StartIdentifying();
    bool good = true;
    for (std::string line; std::getline(list, line);) {
        good &= damage ? IdentifyDamaged(line) : PrintFacts(line.c_str());
    }
    FreeBuffers();
    return good ? 0 : 1;
}
