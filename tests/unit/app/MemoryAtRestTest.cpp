#include "app/MemoryAtRest.h"

#include <QtGlobal>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>

#include <link.h>
#include <sys/mman.h>

namespace lumacap {
namespace {

constexpr std::size_t pageSize = 4096;

/// Constants in pages of their own, which the linker puts among the program's.
alignas(pageSize) constexpr std::array<unsigned char, 4 * pageSize> constants{1, 2, 3};

/// What the process holds of its files, in bytes.
std::size_t memoryOfFiles()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("RssFile:"))
            return std::stoul(line.substr(line.find(':') + 1)) * 1024;
    }
    throw std::runtime_error("the system does not tell");
}

/// Of all the bytes, also the ones between variables, which a sanitizer minds.
[[gnu::no_sanitize_address]] std::uint64_t sum(const unsigned char *begin, std::size_t count)
{
    std::uint64_t result = 0;
    for (std::size_t index = 0; index < count; ++index)
        result = result * 31 + begin[index];
    return result;
}

using Sums = std::map<std::uintptr_t, std::uint64_t>;

/// The sums of all segments that are as their files, by where they are.
Sums sums()
{
    Sums all;
    const auto add = [](dl_phdr_info *object, std::size_t /*size*/, void *target) {
        for (int index = 0; index < object->dlpi_phnum; ++index) {
            const auto &segment = object->dlpi_phdr[index];
            const bool isRead = (segment.p_flags & PF_R) != 0 && isAsItsFile(segment.p_flags);
            if (segment.p_type != PT_LOAD || !isRead)
                continue;
            const std::uintptr_t begin = object->dlpi_addr + segment.p_vaddr;
            (*static_cast<Sums *>(target))[begin] =
                sum(reinterpret_cast<const unsigned char *>(begin), segment.p_filesz);
        }
        return 0;
    };
    dl_iterate_phdr(add, &all);
    return all;
}

/// Changes the first constant for as long as it lives, as a debugger changes code.
class Change {
public:
    Change() { write(200); }
    Q_DISABLE_COPY_MOVE(Change)
    ~Change() { write(1); }

private:
    static void write(unsigned char value)
    {
        auto *const page = const_cast<unsigned char *>(constants.data());
        ASSERT_EQ(mprotect(page, pageSize, PROT_READ | PROT_WRITE), 0);
        *const_cast<volatile unsigned char *>(page) = value;
        ASSERT_EQ(mprotect(page, pageSize, PROT_READ), 0);
    }
};

unsigned char firstConstant()
{
    return *const_cast<const volatile unsigned char *>(constants.data());
}

TEST(MemoryAtRest, holdsLessOfTheFiles)
{
    ASSERT_FALSE(sums().empty()); // they are in memory now
    const std::size_t before = memoryOfFiles();
    giveBackMemory();
    EXPECT_LT(memoryOfFiles(), before / 2);
}

TEST(MemoryAtRest, comesBackAsItWas)
{
    const auto before = sums();
    giveBackMemory();
    EXPECT_EQ(sums(), before);
}

TEST(MemoryAtRest, keepsWhatTheProcessChanged)
{
    const Change change;
    giveBackMemory();
    EXPECT_EQ(firstConstant(), 200);
}

TEST(MemoryAtRest, isAsTheFileOnlyWhereNothingIsWritten)
{
    EXPECT_TRUE(isAsItsFile(PF_R));
    EXPECT_TRUE(isAsItsFile(PF_R | PF_X));
    EXPECT_FALSE(isAsItsFile(PF_R | PF_W));
    EXPECT_FALSE(isAsItsFile(PF_R | PF_W | PF_X));
}

} // namespace
} // namespace lumacap
