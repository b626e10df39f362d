#include "capture/ImageSaver.h"

#include "capture/ClipboardImage.h"
#include "capture/ImageEncoder.h"
#include "capture/encoding/AtomicFile.h"
#include "platform/DefaultsStore.h"
#include "platform/Pasteboard.h"
#include "platform/SoundPlayer.h"
#include "preferences/storage/PreferencesStorage.h"

#include <QDir>
#include <QImage>
#include <QLocale>

#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap {

QString captureFileName(const QDateTime &time, ImageFormat format, const QLocale &locale)
{
    return "Lumacap_"_L1 + locale.toString(time, u"yyyy-MM-dd_HH-mm-ss") + u'.' + rawValue(format);
}

ImageSaver::ImageSaver(Pasteboard &pasteboard, SoundPlayer &soundPlayer,
                       const PreferencesStorage &preferences, Clock clock)
    : m_pasteboard(pasteboard)
    , m_soundPlayer(soundPlayer)
    , m_preferences(preferences)
    , m_clock(std::move(clock))
{
}

ImageSaver::~ImageSaver() = default;

void ImageSaver::save(const QImage &image)
{
    copy(image);
    store(image);
}

void ImageSaver::copy(const QImage &image)
{
    if (!m_preferences.copyToClipboard())
        return;
    m_pasteboard.clearContents();
    auto item = std::make_unique<ClipboardImage>(image);
    m_onPasteboard = item.get();
    m_pasteboard.write(std::move(item));
}

void ImageSaver::store(const QImage &image)
{
    const bool savesToFile = m_preferences.defaults().boolean(u"saveToFile"_s);
    if (savesToFile && writeFile(image) == FileResult::NotBegun)
        return;
    m_soundPlayer.play();
}

void ImageSaver::shrink()
{
    if (m_onPasteboard)
        m_onPasteboard->shrink();
}

ImageSaver::FileResult ImageSaver::writeFile(const QImage &image) const
{
    const ImageFormat format = m_preferences.imageFormat();
    auto file = AtomicFile::create(generateURL(format));
    if (!file)
        return FileResult::NotBegun;
    // From here on a failure leaves no file and no message.
    if (const auto bytes = encodeImage(image, format); bytes && file->write(*bytes))
        std::ignore = file->commit();
    return FileResult::Ended;
}

QString ImageSaver::generateURL(ImageFormat format) const
{
    const QString name = captureFileName(m_clock(), format, QLocale::system());
    return QDir(m_preferences.saveDirectory()).filePath(name);
}

} // namespace lumacap
