#pragma once

#include <QString>

class QWidget;

// Moves the interface fonts the windows were designed with ("メイリオ",
// "Tahoma", "MS UI Gothic", at sizes for a 96 dots-per-inch screen) to the
// best face that is installed, at a size for this screen.
//
// The adapter is not neutral when it runs twice over the same font, and that
// is kept on purpose: with "メイリオ" installed, every size but 12 and 9 times
// the scale becomes 8 times the scale, so 10 drops to 8 on a second run.
class FontAdapter
{
public:
    // One font as the adapter sees it; the character set is the Windows
    // number (128 = Shift-JIS) that the widget keeps as its "Charset" property.
    struct InterfaceFont
    {
        QString name;
        double size = 0;
        int charset = 0;
    };

    // Which faces are installed; asked of the font database by default.
    struct Faces
    {
        bool meiryo = false;
        bool tahoma = false;
    };

    // 96 divided by the screen's dots per inch, computed once per process.
    static float ScreenScale();
    static bool MeiryoInstalled();

    // At start-up, before any window: the design faces find installed
    // Japanese faces, and whatever shows text without a font of its own
    // names the design's interface face, so that the adapter moves it too.
    static void prepareApplication();

    // Adapts every loaded window and every control on it.
    static void adaptAll();
    // Adapts one widget's own font.
    static void adapt(QWidget *object);
    // Adapts a widget and every control on it.
    static void adaptTree(QWidget *root);

    // The rules themselves, on a plain value.
    static void adaptFont(InterfaceFont &font, const Faces &faces, float scale);

    static Faces installedFaces();
    // For tests: forget the computed scale so the next call computes it anew,
    // or take these faces as the installed ones.
    static void resetForTesting();
    static void setFacesForTesting(const Faces &faces);

private:
    static void computeScale();
};
