#include "annotation/AnnotationStore.h"

#include "platform/DefaultsStore.h"
#include "preferences/storage/PreferencesStorage.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap {
namespace {

FrameBackgroundStyle defaultFrameBackground(const DefaultsStore &defaults)
{
    const QString stored = defaults.string(u"defaultFrameBackground"_s).value_or(QString());
    return caseOf(frameBackgroundStyles, stored).value_or(FrameBackgroundStyle::DominantColor);
}

} // namespace

AnnotationStore::AnnotationStore(const PreferencesStorage &preferences)
    : m_showFrame(preferences.defaults().boolean(u"defaultShowFrame"_s))
    , m_frameBackground(defaultFrameBackground(preferences.defaults()))
{
}

AnnotationStore::~AnnotationStore() = default;

template <class Value>
void AnnotationStore::publish(Value &property, Value value,
                              void (AnnotationStore::*willChange)(Value))
{
    Q_EMIT(this->*willChange)(value);
    Q_EMIT objectWillChange();
    property = value;
}

void AnnotationStore::setCurrentTool(AnnotationTool tool)
{
    publish(m_currentTool, tool, &AnnotationStore::currentToolWillChange);
}

void AnnotationStore::setCurrentColor(AnnotationColor color)
{
    publish(m_currentColor, color, &AnnotationStore::currentColorWillChange);
}

void AnnotationStore::setCurrentThickness(LineThickness thickness)
{
    publish(m_currentThickness, thickness, &AnnotationStore::currentThicknessWillChange);
}

void AnnotationStore::setMagnifierShape(MagnifierShape shape)
{
    publish(m_magnifierShape, shape, &AnnotationStore::magnifierShapeWillChange);
}

void AnnotationStore::setMagnifierZoom(MagnifierZoom zoom)
{
    publish(m_magnifierZoom, zoom, &AnnotationStore::magnifierZoomWillChange);
}

void AnnotationStore::setShowFrame(bool isShown)
{
    publish(m_showFrame, isShown, &AnnotationStore::showFrameWillChange);
}

void AnnotationStore::setFrameBackground(FrameBackgroundStyle style)
{
    publish(m_frameBackground, style, &AnnotationStore::frameBackgroundWillChange);
}

void AnnotationStore::add(std::unique_ptr<Annotation> annotation)
{
    const QUuid id = annotation->id();
    Q_EMIT annotationsWillChange();
    Q_EMIT objectWillChange();
    m_annotations.push_back(std::move(annotation));
    m_undoStack.push_back(id);
    if (needsRedraw)
        needsRedraw();
}

void AnnotationStore::undo()
{
    if (m_undoStack.empty())
        return;
    const QUuid id = m_undoStack.back();
    m_undoStack.pop_back();
    Q_EMIT annotationsWillChange();
    Q_EMIT objectWillChange();
    std::erase_if(m_annotations, [id](const auto &annotation) { return annotation->id() == id; });
    if (needsRedraw)
        needsRedraw();
}

} // namespace lumacap
