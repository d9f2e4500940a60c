#pragma once

#include "platform/ports/Measures.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// A constant that QML reads by the same name.
#define KELPA_MEASURE(type, name, value)                                                                     \
    Q_PROPERTY(type name MEMBER name##_ CONSTANT FINAL)                                                      \
    type name##_ = value

namespace kelpa::view {

/// The measures that all faces share, for QML; times are milliseconds there.
class Measures : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    static constexpr int milliseconds(double seconds) { return static_cast<int>(seconds * 1000); }

    KELPA_MEASURE(int, padding, measures::padding);
    KELPA_MEASURE(int, shadowRadius, measures::shadowRadius);
    KELPA_MEASURE(double, selectionShadow, measures::selectionShadow);
    KELPA_MEASURE(double, answerShadow, measures::answerShadow);
    KELPA_MEASURE(int, promptSize, measures::promptSize);
    KELPA_MEASURE(int, countSize, measures::countSize);
    KELPA_MEASURE(int, belowPrompt, measures::belowPrompt);
    KELPA_MEASURE(int, capsulePadding, measures::capsulePadding);
    KELPA_MEASURE(int, slimCapsulePadding, measures::slimCapsulePadding);
    KELPA_MEASURE(int, panelPadding, measures::panelPadding);
    KELPA_MEASURE(int, captionSize, measures::captionSize);
    KELPA_MEASURE(double, figureShrink, measures::figureShrink);
    KELPA_MEASURE(int, cupSize, measures::cupSize);
    KELPA_MEASURE(double, remainingOpacity, measures::remainingOpacity);
    KELPA_MEASURE(int, barHeight, measures::barHeight);
    KELPA_MEASURE(int, trackHeight, measures::trackHeight);
    KELPA_MEASURE(int, barTime, milliseconds(measures::barSeconds));
    KELPA_MEASURE(int, dividerHeight, measures::dividerHeight);
    KELPA_MEASURE(int, tileColumns, measures::tileColumns);
    KELPA_MEASURE(int, tileHeight, measures::tileHeight);
    KELPA_MEASURE(int, tileInset, measures::tileInset);
    KELPA_MEASURE(int, slideTime, milliseconds(measures::slideSeconds));
    KELPA_MEASURE(int, sectionTitleSize, measures::sectionTitleSize);
    KELPA_MEASURE(int, pictureSize, measures::pictureSize);
    KELPA_MEASURE(int, belowGlyph, measures::belowGlyph);
};

} // namespace kelpa::view

#undef KELPA_MEASURE
