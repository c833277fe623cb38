// The names that the built libraries export, read from the files: those of the tables, and nothing else.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/export_tables.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <elf.h>
#endif

namespace orptest {
namespace {

using Names = std::set<std::string>;

class Image {
 public:
  explicit Image(const char* path) : file_(path, std::ios::binary) {
    bytes_.assign(std::istreambuf_iterator<char>(file_), {});
  }
  template <class T>
  T at(uint64_t offset) const {
    T value;
    if (offset > bytes_.size() || bytes_.size() - offset < sizeof(T)) throw std::out_of_range("beyond the file");
    std::memcpy(&value, &bytes_[offset], sizeof(T));
    return value;
  }
  std::string text(uint64_t offset) const {
    std::string text;
    for (char c; (c = at<char>(offset)) != 0; ++offset) text += c;
    return text;
  }

 private:
  std::ifstream file_;
  std::vector<char> bytes_;
};

#if defined(_WIN32)

Names exportedNames(const char* path) {
  const Image image(path);
  const auto header = static_cast<uint64_t>(image.at<IMAGE_DOS_HEADER>(0).e_lfanew);
  const auto nt = image.at<IMAGE_NT_HEADERS64>(header);
  const auto fileOffset = [&](uint64_t address) {  // of an address relative to the loaded image
    for (unsigned i = 0; i < nt.FileHeader.NumberOfSections; ++i) {
      const auto section = image.at<IMAGE_SECTION_HEADER>(header + sizeof(nt) + i * sizeof(IMAGE_SECTION_HEADER));
      if (address >= section.VirtualAddress && address < section.VirtualAddress + uint64_t{section.SizeOfRawData})
        return address - section.VirtualAddress + section.PointerToRawData;
    }
    throw std::out_of_range("address in no section");
  };
  const auto& entry = nt.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  const auto directory = image.at<IMAGE_EXPORT_DIRECTORY>(fileOffset(entry.VirtualAddress));
  EXPECT_EQ(directory.NumberOfNames, directory.NumberOfFunctions) << "an export without a name";
  Names names;
  for (unsigned i = 0; i < directory.NumberOfNames; ++i)
    names.insert(image.text(fileOffset(image.at<DWORD>(fileOffset(directory.AddressOfNames) + 4 * i))));
  return names;
}

#else

Names exportedNames(const char* path) {
  const Image image(path);
  const auto header = image.at<Elf64_Ehdr>(0);
  const auto sectionAt = [&](uint64_t i) { return image.at<Elf64_Shdr>(header.e_shoff + i * header.e_shentsize); };
  Names names;
  for (unsigned s = 0; s < header.e_shnum; ++s) {
    const Elf64_Shdr symbols = sectionAt(s);
    if (symbols.sh_type != SHT_DYNSYM) continue;
    const Elf64_Shdr texts = sectionAt(symbols.sh_link);
    for (uint64_t offset = 0; offset < symbols.sh_size; offset += symbols.sh_entsize) {
      const auto symbol = image.at<Elf64_Sym>(symbols.sh_offset + offset);
      const bool defined = symbol.st_shndx != SHN_UNDEF && ELF64_ST_BIND(symbol.st_info) != STB_LOCAL;
      const bool versionName = symbol.st_shndx == SHN_ABS;
      if (defined && !versionName) names.insert(image.text(texts.sh_offset + symbol.st_name));
    }
  }
  return names;
}

#endif

Names listedNames() {
  Names names;
  std::ifstream list(EXPORT_LIST);
  for (std::string line; std::getline(list, line);)
    if (!line.empty() && line[0] != '#') names.insert(line);
  return names;
}

Names tabled() {
  Names names;
  for (const Export& each : tabledExports())
    EXPECT_TRUE(names.insert(each.name).second) << each.name << " stands twice";
  return names;
}

Names without(const Names& all, const Names& some) {
  Names rest;
  std::set_difference(all.begin(), all.end(), some.begin(), some.end(), std::inserter(rest, rest.end()));
  return rest;
}

TEST(Exports, AreThoseOfTheTables) {
  const Names exported = exportedNames(ORPSP_FILE), expected = tabled();
  EXPECT_EQ(Names{}, without(expected, exported)) << "in a table, not exported";
  EXPECT_EQ(Names{}, without(exported, expected)) << "exported, in no table";
}

TEST(Exports, AreOnTheList) {
  const Names listed = listedNames();
  EXPECT_EQ(2106u, listed.size());
  EXPECT_EQ(Names{}, without(tabled(), listed)) << "in a table, not on the list";
}

TEST(Exports, AreThereForEveryRowOfTraits) {
  for (const TraitRow& row : kTraitRows)
    EXPECT_TRUE(std::any_of(tabledExports().begin(), tabledExports().end(), [&](const Export& each) {
      return matches(each.name, row.names);
    })) << row.names;
}

TEST(Exports, OfTheCoreLibrary) {
  EXPECT_EQ(
      (Names{"orpAlignPtr", "orpFree", "orpGetEnabledCpuFeatures", "orpGetNumThreads", "orpGetVectorBits", "orpMalloc",
             "orpSetAllocator", "orpSetCpuFeatures", "orpSetNumThreads", "ownGetNumThreads", "ownSetVectorBits"}),
      exportedNames(ORPCORE_FILE));
}

}  // namespace
}  // namespace orptest
