#pragma once

#include <QProxyStyle>

// The flat look of the program's scroll bars: a calm cream track, wide enough
// to hit, a rounded orange thumb and plain arrows without bevels. A bar with
// nothing to scroll is drawn greyed, thumb-less.
class FlatScrollStyle : public QProxyStyle
{
    Q_OBJECT

public:
    // The one shared instance; bars only borrow it.
    static FlatScrollStyle *instance();

    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget = nullptr) const override;

private:
    FlatScrollStyle();
};
