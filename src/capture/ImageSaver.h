#pragma once

#include "preferences/storage/ImageFormat.h"

#include <QDateTime>
#include <QPointer>
#include <QString>

#include <functional>

QT_BEGIN_NAMESPACE
class QImage;
class QLocale;
QT_END_NAMESPACE

namespace lumacap {

class ClipboardImage;
class Pasteboard;
class PreferencesStorage;
class SoundPlayer;

/// "Lumacap_", the local date and time in the Gregorian calendar with the locale's digits, and the
/// format's extension.
QString captureFileName(const QDateTime &time, ImageFormat format, const QLocale &locale);

/// The one place where a finished picture leaves the program: by the clipboard and by a file, as
/// the settings say at that moment, and then with a sound.
class ImageSaver {
public:
    using Clock = std::function<QDateTime()>;

    /// Borrows the services and settings, which outlive the object. `clock` tells the local time.
    ImageSaver(
        Pasteboard &pasteboard, SoundPlayer &soundPlayer, const PreferencesStorage &preferences,
        Clock clock = [] { return QDateTime::currentDateTime(); });
    Q_DISABLE_COPY_MOVE(ImageSaver)
    ~ImageSaver();

    /// Never reports a failure. When the file can't be begun, the operation ends without the sound;
    /// a file that fails later is absent, and the sound is played.
    void save(const QImage &image);
    /// The two halves of it, for who takes a window off the screen between them: some desktops let
    /// only the window with the keyboard fill the clipboard, and a file takes a while.
    void copy(const QImage &image);
    void store(const QImage &image);

    /// Holds what it put on the clipboard in as little memory as it can. Takes as long as a PNG.
    void shrink();

private:
    enum class FileResult { NotBegun, Ended };

    FileResult writeFile(const QImage &image) const;
    QString generateURL(ImageFormat format) const;

    Pasteboard &m_pasteboard;
    SoundPlayer &m_soundPlayer;
    const PreferencesStorage &m_preferences;
    Clock m_clock;
    /// The pasteboard owns it.
    QPointer<ClipboardImage> m_onPasteboard;
};

} // namespace lumacap
