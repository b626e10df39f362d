#include "platform/WindowOwner.h"

#include "platform/ApplicationNames.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

/// Empty when there is no such process.
QString processName(std::int64_t processId)
{
    QFile file(u"/proc/%1/comm"_s.arg(processId));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readLine().trimmed())
                                          : QString();
}

} // namespace

QString ownerName(const WindowOwner &owner, const ApplicationNames &names)
{
    QStringList identifiers{owner.applicationId, owner.className, owner.classInstance};
    identifiers.removeAll(QString());
    if (const auto name = names.nameOf(identifiers))
        return *name;
    if (!owner.className.isEmpty())
        return owner.className;
    if (!owner.applicationId.isEmpty())
        return owner.applicationId;
    return owner.processId ? processName(*owner.processId) : QString();
}

} // namespace lumacap
