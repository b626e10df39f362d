#include "harness/TestedBuild.h"

#include <QDir>

namespace lumacap::harness {

namespace {

constexpr const char *variable = "LUMACAP_TESTED_BUILD";

} // namespace

QString testedProgram(const QString &built)
{
    if (!qEnvironmentVariableIsSet(variable))
        return built;
    const QDir own(QStringLiteral(LUMACAP_BUILD_DIR));
    return QDir(qEnvironmentVariable(variable)).filePath(own.relativeFilePath(built));
}

std::int64_t keptBySanitizer()
{
    return qEnvironmentVariableIsSet(variable) ? std::int64_t{1} << 30 : 0;
}

} // namespace lumacap::harness
