#include "app/MemoryAtRest.h"

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

namespace lumacap {

static_assert(isAsItsFile(PF_R | PF_X) && !isAsItsFile(PF_R | PF_W));

namespace {

/// Tells which pages of this process are its own, changed copies of a file's.
class OwnPages {
public:
    OwnPages()
        : m_pagemap(open("/proc/self/pagemap", O_RDONLY | O_CLOEXEC))
    {
    }
    ~OwnPages()
    {
        if (m_pagemap >= 0)
            close(m_pagemap);
    }
    Q_DISABLE_COPY_MOVE(OwnPages)

    /// Whether all `count` pages from number `first` on are the file's, or not in memory. False
    /// where the system does not tell.
    bool areNotAmong(std::uintptr_t first, std::size_t count) const
    {
        std::array<std::uint64_t, 1024> entries{};
        while (count > 0) {
            const std::size_t part = std::min(count, entries.size());
            const std::size_t bytes = part * sizeof entries[0];
            if (pread(m_pagemap, entries.data(), bytes,
                      static_cast<off_t>(first * sizeof entries[0]))
                != static_cast<ssize_t>(bytes))
                return false;
            if (std::any_of(entries.begin(), entries.begin() + part, isOwn))
                return false;
            first += part;
            count -= part;
        }
        return true;
    }

private:
    /// Of an entry of the table, which the kernel describes in its Documentation/admin-guide/mm/
    /// pagemap.rst.
    static bool isOwn(std::uint64_t entry)
    {
        constexpr std::uint64_t isPresent = 1ULL << 63;
        constexpr std::uint64_t isSwapped = 1ULL << 62;
        constexpr std::uint64_t isOfFile = 1ULL << 61;
        return (entry & isSwapped) != 0 || ((entry & isPresent) != 0 && (entry & isOfFile) == 0);
    }

    int m_pagemap;
};

void giveBack(std::uintptr_t begin, std::uintptr_t end, const OwnPages &ownPages)
{
    const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const std::uintptr_t first = begin / pageSize;
    const std::uintptr_t count = (end + pageSize - 1) / pageSize - first;
    if (!ownPages.areNotAmong(first, count))
        return;
    // Not MADV_COLD, which leaves the pages mapped, and not MADV_PAGEOUT, after which they would
    // have to be read from the disk.
    madvise(reinterpret_cast<void *>(first * pageSize), count * pageSize, MADV_DONTNEED);
}

/// While the dynamic loader calls this, it unloads nothing.
int giveBackObject(dl_phdr_info *object, std::size_t /*size*/, void *ownPages)
{
    for (const auto *segment = object->dlpi_phdr; segment != object->dlpi_phdr + object->dlpi_phnum;
         ++segment) {
        if (segment->p_type != PT_LOAD || !isAsItsFile(segment->p_flags))
            continue;
        const std::uintptr_t begin = object->dlpi_addr + segment->p_vaddr;
        giveBack(begin, begin + segment->p_filesz, *static_cast<const OwnPages *>(ownPages));
    }
    return 0;
}

} // namespace

void giveBackMemory()
{
    malloc_trim(0);
    OwnPages ownPages;
    dl_iterate_phdr(&giveBackObject, &ownPages);
}

} // namespace lumacap
