#include "preferences/window/OutputDetails.h"

#include "graphics/PointPainting.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/look/PrefsText.h"
#include "preferences/look/PrefsTheme.h"
#include "preferences/look/PushControl.h"
#include "preferences/look/SegmentedPicker.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap {
namespace {

constexpr TextFont body{prefslook::bodyFont, FontWeight::Regular};
constexpr int symbolSide = 16; // as high as a line
constexpr int lineSpacing = 8;

/// The name of the folder itself; the root has none but its path. On one line, whatever it holds.
QString lastPathComponent(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    const QString name = QFileInfo(clean).fileName();
    return (name.isEmpty() ? clean : name).simplified();
}

/// A symbol as explaining text is.
class SecondarySymbol final : public QWidget {
public:
    SecondarySymbol(QString symbol, QWidget *parent)
        : QWidget(parent)
        , m_symbol(std::move(symbol))
    {
        setFixedSize(symbolSide, symbolSide);
    }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        drawSymbol(painter, m_symbol, rect(), symbolSide, prefsThemeOf(palette()).secondary);
    }

private:
    QString m_symbol;
};

QHBoxLayout *lineIn(QWidget *line)
{
    auto *const layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(lineSpacing);
    return layout;
}

} // namespace

OutputDetails::OutputDetails(const QString &saveDirectory, ImageFormat format, QWidget *parent)
    : QWidget(parent)
    , m_folder(new PrefsText(lastPathComponent(saveDirectory), body, TextStyle::Secondary,
                             TextOverflow::ElideInMiddle, this))
{
    m_folder->setObjectName(u"saveDirectory"_s);
    auto *const lines = new QVBoxLayout(this);
    lines->setContentsMargins(0, prefslook::groupTop, 0, 0);
    lines->setSpacing(prefslook::outputSpacing);
    lines->addWidget(folderLine());
    lines->addWidget(formatLine(format));
}

QWidget *OutputDetails::folderLine()
{
    auto *const line = new QWidget(this);
    auto *const choose = new PushControl(u"Choisir..."_s, line);
    choose->setObjectName(u"chooseSaveDirectory"_s);
    connect(choose, &QAbstractButton::clicked, this, &OutputDetails::directoryWanted);
    QHBoxLayout *const layout = lineIn(line);
    layout->addWidget(new SecondarySymbol(u"folder"_s, line));
    layout->addWidget(m_folder);
    layout->addStretch();
    layout->addWidget(choose);
    return line;
}

QWidget *OutputDetails::formatLine(ImageFormat format)
{
    auto *const line = new QWidget(this);
    QStringList labels;
    for (const ImageFormatRow &row : imageFormats)
        labels.append(QString(row.rawValue).toUpper());
    const QString name = u"Format"_s;
    auto *const picker = new SegmentedPicker(name, labels, line);
    picker->setObjectName(u"imageFormat"_s);
    picker->setCurrent(static_cast<int>(format));
    connect(picker, &ChoiceGroup::chosen, this,
            [this](int index) { Q_EMIT formatChosen(static_cast<ImageFormat>(index)); });
    QHBoxLayout *const layout = lineIn(line);
    layout->addWidget(new PrefsText(name, body, TextStyle::Secondary, TextOverflow::Grow, line));
    layout->addStretch();
    layout->addWidget(picker);
    return line;
}

void OutputDetails::showDirectory(const QString &saveDirectory)
{
    m_folder->setText(lastPathComponent(saveDirectory));
}

} // namespace lumacap
