#pragma once

#include "platform/Result.h"

#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

#include <ctime>

namespace lumacap::portal {

/// Now, by the clock that files are dated with.
timespec fileClock();

/// The path that `uri` names, as the bytes it is on disk; nothing for what is no file of this
/// machine.
std::optional<QByteArray> pathOf(const QString &uri);

/// The file that the portal wrote a picture into for us.
class PictureFile {
public:
    /// Opens what `uri` names. `asked` is when the picture was asked for. Fails, in bounded time,
    /// for anything but a plain file of this user of a size that pictures have.
    static Result<PictureFile> open(const QString &uri, timespec asked);

    /// Decodes the picture if its size is `wanted`, which says why it is not. A file that claims to
    /// be larger than any picture of the screens costs no memory.
    Result<QImage> read(const std::function<Result<void>(QSize)> &wanted);
    /// Deletes the file, unless it was there before the picture was asked for, or another has taken
    /// its place.
    void discard() const;

private:
    PictureFile(std::unique_ptr<QFile> file, QByteArray path, bool isNew);

    std::unique_ptr<QFile> m_file;
    QByteArray m_path;
    bool m_isNew;
};

} // namespace lumacap::portal
