#pragma once

#include "platform/ports/Measures.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace kelpa::view {

/// The measures that all faces share, for QML; times are milliseconds there.
class Measures : public QObject {
    Q_OBJECT
    Q_PROPERTY(int padding MEMBER padding_ CONSTANT FINAL)
    Q_PROPERTY(int shadowRadius MEMBER shadowRadius_ CONSTANT FINAL)
    Q_PROPERTY(double selectionShadow MEMBER selectionShadow_ CONSTANT FINAL)
    Q_PROPERTY(double answerShadow MEMBER answerShadow_ CONSTANT FINAL)
    Q_PROPERTY(int promptSize MEMBER promptSize_ CONSTANT FINAL)
    Q_PROPERTY(int countSize MEMBER countSize_ CONSTANT FINAL)
    Q_PROPERTY(int belowPrompt MEMBER belowPrompt_ CONSTANT FINAL)
    Q_PROPERTY(int capsulePadding MEMBER capsulePadding_ CONSTANT FINAL)
    Q_PROPERTY(int slimCapsulePadding MEMBER slimCapsulePadding_ CONSTANT FINAL)
    Q_PROPERTY(int panelPadding MEMBER panelPadding_ CONSTANT FINAL)
    Q_PROPERTY(int captionSize MEMBER captionSize_ CONSTANT FINAL)
    Q_PROPERTY(double figureShrink MEMBER figureShrink_ CONSTANT FINAL)
    Q_PROPERTY(int cupSize MEMBER cupSize_ CONSTANT FINAL)
    Q_PROPERTY(double remainingOpacity MEMBER remainingOpacity_ CONSTANT FINAL)
    Q_PROPERTY(int barHeight MEMBER barHeight_ CONSTANT FINAL)
    Q_PROPERTY(int trackHeight MEMBER trackHeight_ CONSTANT FINAL)
    Q_PROPERTY(int barTime MEMBER barTime_ CONSTANT FINAL)
    Q_PROPERTY(int dividerHeight MEMBER dividerHeight_ CONSTANT FINAL)
    Q_PROPERTY(int tileColumns MEMBER tileColumns_ CONSTANT FINAL)
    Q_PROPERTY(int tileHeight MEMBER tileHeight_ CONSTANT FINAL)
    Q_PROPERTY(int tileInset MEMBER tileInset_ CONSTANT FINAL)
    Q_PROPERTY(int slideTime MEMBER slideTime_ CONSTANT FINAL)
    Q_PROPERTY(int sectionTitleSize MEMBER sectionTitleSize_ CONSTANT FINAL)
    Q_PROPERTY(int pictureSize MEMBER pictureSize_ CONSTANT FINAL)
    Q_PROPERTY(int belowGlyph MEMBER belowGlyph_ CONSTANT FINAL)
    QML_ELEMENT
    QML_SINGLETON

  private:
    static constexpr int milliseconds(double seconds) { return static_cast<int>(seconds * 1000); }

    int padding_ = measures::padding;
    int shadowRadius_ = measures::shadowRadius;
    double selectionShadow_ = measures::selectionShadow;
    double answerShadow_ = measures::answerShadow;
    int promptSize_ = measures::promptSize;
    int countSize_ = measures::countSize;
    int belowPrompt_ = measures::belowPrompt;
    int capsulePadding_ = measures::capsulePadding;
    int slimCapsulePadding_ = measures::slimCapsulePadding;
    int panelPadding_ = measures::panelPadding;
    int captionSize_ = measures::captionSize;
    double figureShrink_ = measures::figureShrink;
    int cupSize_ = measures::cupSize;
    double remainingOpacity_ = measures::remainingOpacity;
    int barHeight_ = measures::barHeight;
    int trackHeight_ = measures::trackHeight;
    int barTime_ = milliseconds(measures::barSeconds);
    int dividerHeight_ = measures::dividerHeight;
    int tileColumns_ = measures::tileColumns;
    int tileHeight_ = measures::tileHeight;
    int tileInset_ = measures::tileInset;
    int slideTime_ = milliseconds(measures::slideSeconds);
    int sectionTitleSize_ = measures::sectionTitleSize;
    int pictureSize_ = measures::pictureSize;
    int belowGlyph_ = measures::belowGlyph;
};

} // namespace kelpa::view
