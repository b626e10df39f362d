#include "preferences/window/BackgroundTiles.h"

#include "graphics/ColorMixing.h"
#include "graphics/PointPainting.h"
#include "graphics/Text.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/look/PrefsPainting.h"
#include "preferences/look/PrefsTheme.h"

#include <QGridLayout>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace lumacap {
namespace {

/// The symbol and the label of one background.
class BackgroundTile final : public ChoiceControl {
public:
    BackgroundTile(FrameBackgroundStyle style, QWidget *parent)
        : ChoiceControl(label(style), parent)
        , m_symbol(rowOf(frameBackgroundStyles, style).icon)
        , m_label(label(style), prefslook::captionFont, FontWeight::Regular)
    {
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    QPainterPath outline() const override
    {
        return continuousRoundedRect(rect(), prefslook::tileRadius);
    }

    QSize sizeHint() const override
    {
        return {static_cast<int>(std::ceil(m_label.size().width)),
                labelTop() + labelHeight() + prefslook::tileEdgePadding};
    }

protected:
    void paintFace(QPainter &painter, const PrefsTheme &theme) const override
    {
        painter.fillPath(outline(),
                         isChecked() ? translucent(theme.accent, prefslook::tileCurrentOpacity)
                                     : translucent(theme.primary, prefslook::tileOpacity));
        painter.fillPath(outline(), feedback(theme.primary));
        if (isChecked())
            strokeInside(painter, rect(), prefslook::tileRadius, prefslook::tileOutlineWidth,
                         theme.accent);
        const QRectF symbol(0, prefslook::tileEdgePadding, width(), prefslook::tileSymbolHeight);
        drawSymbol(painter, m_symbol, symbol,
                   prefslook::tileSymbolFont * prefslook::symbolSideAFont, theme.primary);
        drawTextInMiddle(painter, m_label, QRectF(0, labelTop(), width(), labelHeight()),
                         theme.primary);
    }

private:
    static int labelTop()
    {
        return prefslook::tileEdgePadding + prefslook::tileSymbolHeight + prefslook::tileLabelGap;
    }
    int labelHeight() const { return static_cast<int>(std::ceil(m_label.size().height)); }

    QString m_symbol;
    Text m_label;
};

} // namespace

BackgroundTiles::BackgroundTiles(const QString &name, FrameBackgroundStyle current, QWidget *parent)
    : ChoiceGroup(name, prefslook::tileColumns, parent)
{
    auto *const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(prefslook::tileSpacing);
    for (int index = 0; const FrameBackgroundStyleRow &row : frameBackgroundStyles) {
        auto *const tile = new BackgroundTile(row.value, this);
        grid->addWidget(tile, index / prefslook::tileColumns, index % prefslook::tileColumns);
        grid->setColumnStretch(index % prefslook::tileColumns, 1);
        add(tile);
        ++index;
    }
    setCurrent(static_cast<int>(current));
    connect(this, &ChoiceGroup::chosen, this,
            [this](int index) { Q_EMIT styleChosen(static_cast<FrameBackgroundStyle>(index)); });
}

} // namespace lumacap
