#pragma once

#include "platform/Result.h"

#include <QByteArray>
#include <QString>

#include <functional>

#include <sys/types.h>

namespace lumacap {

/// How an AtomicFile is kept out of sight until it is committed: without a name, so that even a
/// killed process leaves nothing behind; or, where the filesystem knows no such files, under a
/// hidden name beside the final one, which stays there when the process is killed.
enum class Concealment { Unnamed, HiddenName };

/// A file that appears under its final name whole or not at all. Whatever had the name stays
/// untouched until commit(); without one, nothing remains. Not thread-safe.
class AtomicFile {
public:
    /// A file for `finalPath`, empty. Symbolic links there are followed. An earlier file's
    /// permission bits are kept, a new file has those of the umask. Fails where something other
    /// than a regular file has the name and where the folder is missing or cannot be written.
    static Result<AtomicFile> create(const QString &finalPath,
                                     Concealment concealment = Concealment::Unnamed);

    AtomicFile(AtomicFile &&other) noexcept;
    AtomicFile &operator=(AtomicFile &&other) noexcept;
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;
    ~AtomicFile();

    /// Appends all of `bytes`. After a failure the file can only be abandoned.
    Result<void> write(QByteArrayView bytes);

    /// Puts the file under its final name in one step, in place of an earlier one. Fails without a
    /// trace, also after a failed write and when called again.
    Result<void> commit();

private:
    AtomicFile() = default;
    void swap(AtomicFile &other) noexcept;
    Result<void> open(mode_t mode, Concealment concealment);
    /// Offers `make` hidden names until it has made one of them this file's.
    Result<void> takeHiddenName(const std::function<bool(const char *name)> &make);
    Result<void> finishContents();
    Result<void> linkToFinalName();
    bool linkTo(const char *name) const;
    Result<void> renameToFinalName();

    QString m_path;
    QByteArray m_finalName;
    /// Empty while the file has no name.
    QByteArray m_hiddenName;
    int m_folder = -1;
    int m_file = -1;
    bool m_failed = false;
};

} // namespace lumacap
