#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace lumacap {

class PrefsSection;
class ScrollMark;

/// The sections one below the other, scrolled where they don't fit.
class SectionColumn final : public QScrollArea {
    Q_OBJECT

public:
    explicit SectionColumn(QWidget *parent);

    /// Puts a section below those that are there.
    void add(PrefsSection *section);
    /// Brings a widget of a section into view once it has its place.
    void reveal(QWidget *widget);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QVBoxLayout *m_sections = nullptr;
    ScrollMark *m_mark;
};

} // namespace lumacap
