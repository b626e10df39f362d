#include "harness/SmallDisk.h"

#include <unistd.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

QStringList withSmallDisk(const QString &folder, int kibibytes, Access access)
{
    QStringList command{u"unshare"_s, u"--mount"_s};
    // Others than root need a user name space to mount in, in which they stay themselves: the
    // session bus refuses a client that calls itself root.
    if (::geteuid() != 0)
        command << u"--user"_s << u"--map-current-user"_s << u"--keep-caps"_s;
    const QString mode = access == Access::ReadOnly ? u"ro"_s : u"rw"_s;
    command << u"sh"_s << u"-c"_s
            << u"mount -t tmpfs -o %1,size=%2k,mode=0755 none \"$0\" && exec \"$@\""_s.arg(mode)
                   .arg(kibibytes)
            << folder;
    return command;
}

QString seenBy(int pid, const QString &folder)
{
    return u"/proc/%1/root%2"_s.arg(pid).arg(folder);
}

} // namespace lumacap::harness
