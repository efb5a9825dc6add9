#pragma once

#include <QColor>
#include <QFont>
#include <QStringList>
#include <QString>

class QPainter;
class QRect;
class QRectF;

// The look shared by the big touch controls: a warm, calm palette with strong
// contrast for old eyes, and large Japanese type.
class TouchTheme
{
public:
    // Surfaces
    static QColor paper();        // panel body
    static QColor buttonTop();    // button face, top of its gradient
    static QColor buttonBottom(); // button face, bottom of its gradient
    static QColor hoverTop();
    static QColor hoverBottom();
    static QColor downTop();
    static QColor downBottom();
    static QColor disabledFace();
    static QColor titleBar(bool active);
    static QColor titleText(bool active);

    // Lines and type
    static QColor ink(); // captions and text
    static QColor inkDisabled();
    static QColor promptInk(); // prompt texts of empty edits
    static QColor border();
    static QColor accent(); // hover frames, pressed frames, focus
    static QColor accentDark();
    static QColor shadow(int alpha);

    // Type in pixel sizes, so that scaling a control by a percentage scales
    // its type with it. Fonts name the faces the windows were designed with
    // ("MS UI Gothic" for captions, "メイリオ" for titles), followed by the
    // installed Japanese faces that draw them here.
    static QString uiFace();
    static QString titleFace();
    static QStringList familiesFor(const QString &designFace);
    // The families of every caption, the design face first.
    static QStringList faces();
    static QFont captionFont(int pixelSize = 24);
    static QFont titleFont(int pixelSize = 26);
    static int smallestPixelSize();
    // The font's size in pixels, also for a font given in points.
    static int pixelSize(const QFont &font);

    // The largest font no bigger than `font` whose wrapped text fits `box`;
    // never smaller than smallestPixelSize(). Captions must never be cut off.
    static QFont fittedFont(const QFont &font, const QString &text, const QRect &box, int flags);

    // A soft drop shadow below and to the right of `body`, which the caller
    // then fills opaque: the middle of the shadow is left out.
    static void paintShadow(QPainter &painter, const QRectF &body, qreal radius, int depth);
};
