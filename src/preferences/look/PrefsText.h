#pragma once

#include "graphics/Text.h"

#include <QString>
#include <QWidget>

#include <memory>

namespace lumacap {

/// How much a text is to be noticed.
enum class TextStyle { Primary, Secondary, Tertiary };

/// What a text does that is longer than its line.
enum class TextOverflow { Grow, Wrap, ElideInMiddle };

struct TextFont {
    double points;
    FontWeight weight;
};

/// A text that nobody changes but us. Assistive technology reads it whole.
class PrefsText final : public QWidget {
    Q_OBJECT

public:
    PrefsText(const QString &text, TextFont font, TextStyle style, TextOverflow overflow,
              QWidget *parent);
    Q_DISABLE_COPY_MOVE(PrefsText)
    ~PrefsText() override;

    void setText(const QString &text);
    /// As it is to be seen, with line feeds and the sign of what was left out.
    QString shownText() const { return m_shownText; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return m_overflow == TextOverflow::Wrap; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QString fitted(int width) const;
    void fit();

    QString m_text;
    TextFont m_font;
    TextStyle m_style;
    TextOverflow m_overflow;
    QSize m_wholeSize;
    QString m_shownText;
    std::unique_ptr<Text> m_shown;
};

} // namespace lumacap
