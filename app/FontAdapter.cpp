#include "app/FontAdapter.h"
#include "platform/FontSubstitution.h"
#include "platform/touch/TouchTheme.h"

#include <algorithm>

#include <QApplication>
#include <QFontDatabase>
#include <QScreen>
#include <QWidget>

namespace {

// The shared interface state: 0 until first computed.
float screenScale = 0.0f;
bool meiryoInstalled = false;
bool tahomaInstalled = false;

const QString Meiryo = QStringLiteral("メイリオ");
const QString Tahoma = QStringLiteral("Tahoma");
const QString UiGothic = QStringLiteral("MS UI Gothic");
constexpr int ShiftJisCharset = 128;
// The property under which the workspace keeps a control's designed pixel size.
constexpr const char *DesignPixelSize = "designPixelSize";

bool sameSize(double size, double designed, float scale)
{
    // The comparison is exact equality with the product, in the precision
    // font sizes are kept in.
    return static_cast<float>(size) == static_cast<float>(designed) * scale;
}

} // namespace

void FontAdapter::computeScale()
{
    double dpiX = 96.0, dpiY = 96.0;
    if (const QScreen *screen = QGuiApplication::primaryScreen()) {
        dpiX = screen->logicalDotsPerInchX();
        dpiY = screen->logicalDotsPerInchY();
    }
    // Twips per pixel in each direction, averaged, against 15 at 96 dpi.
    const double twipsX = 1440.0 / dpiX;
    const double twipsY = 1440.0 / dpiY;
    screenScale = static_cast<float>((twipsX + twipsY) / 2.0 / 15.0);
    // The installed faces do not change while the program runs, and asking
    // for every control would cost more than the adapting itself.
    const QStringList families = QFontDatabase::families();
    meiryoInstalled = families.contains(Meiryo);
    tahomaInstalled = families.contains(Tahoma);
}

float FontAdapter::ScreenScale()
{
    if (screenScale == 0.0f)
        computeScale();
    return screenScale;
}

bool FontAdapter::MeiryoInstalled()
{
    ScreenScale();
    return meiryoInstalled;
}

void FontAdapter::resetForTesting()
{
    screenScale = 0.0f;
    meiryoInstalled = tahomaInstalled = false;
}

void FontAdapter::setFacesForTesting(const Faces &faces)
{
    ScreenScale();
    meiryoInstalled = faces.meiryo;
    tahomaInstalled = faces.tahoma;
}

FontAdapter::Faces FontAdapter::installedFaces()
{
    ScreenScale();
    return Faces{meiryoInstalled, tahomaInstalled};
}

void FontAdapter::prepareApplication()
{
    FontSubstitution::install();
    QFont interfaceFont = QApplication::font();
    interfaceFont.setFamilies(TouchTheme::faces());
    QApplication::setFont(interfaceFont);
}

void FontAdapter::adaptFont(InterfaceFont &font, const Faces &faces, float scale)
{
    if (font.name != UiGothic && font.name != Tahoma && font.name != Meiryo)
        return;

    if (faces.meiryo) {
        font.name = Meiryo;
        if (sameSize(font.size, 12, scale))
            font.size = 10 * scale;
        else if (sameSize(font.size, 9, scale))
            font.size = 8 * scale;
        else
            font.size = 8 * scale;
        return;
    }

    font.charset = ShiftJisCharset;
    if (!faces.tahoma) {
        font.name = UiGothic;
        return;
    }
    font.name = Tahoma;
    if (sameSize(font.size, 9, scale))
        font.size = 8 * scale;
}

void FontAdapter::adapt(QWidget *object)
{
    if (!object)
        return;
    const float scale = ScreenScale();
    QFont font = object->font();
    // Our type is kept in pixels of the 96 dots-per-inch design (the workspace
    // keeps each control's designed size and scales it with the screen); the
    // rules are for points of that design, and act on the designed size.
    const bool inPixels = font.pixelSize() > 0;
    const QVariant kept = object->property(DesignPixelSize);
    const double designPixels = !inPixels ? 0.0 : kept.isValid() ? kept.toDouble()
                                                                 : font.pixelSize();
    const InterfaceFont before{font.family(), inPixels ? designPixels * 72.0 / 96.0 : font.pointSizeF(),
                               object->property("Charset").toInt()};
    InterfaceFont value = before;
    adaptFont(value, installedFaces(), scale);
    if (value.charset != before.charset)
        object->setProperty("Charset", value.charset);
    if (value.name == before.name && value.size == before.size)
        return;

    // The faces behind the design face still draw whatever the new one lacks.
    QStringList families = font.families();
    families.removeAll(before.name);
    families.removeAll(value.name);
    families.prepend(value.name);
    font.setFamilies(families);
    if (inPixels && value.size != before.size && designPixels > 0) {
        const double newDesign = value.size * 96.0 / 72.0;
        if (kept.isValid())
            object->setProperty(DesignPixelSize, qRound(newDesign));
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * newDesign / designPixels)));
    } else if (!inPixels && value.size > 0) {
        font.setPointSizeF(value.size);
    }
    object->setFont(font);
}

namespace {

// A window's own controls: a window inside it is a form of its own.
QList<QWidget *> controlsOf(QWidget *root)
{
    QList<QWidget *> controls;
    for (QWidget *control : root->findChildren<QWidget *>()) {
        if (control->window() == root->window())
            controls.append(control);
    }
    return controls;
}

} // namespace

void FontAdapter::adaptAll()
{
    for (QWidget *window : QApplication::topLevelWidgets())
        adaptTree(window);
}

void FontAdapter::adaptTree(QWidget *root)
{
    adapt(root);
    for (QWidget *control : controlsOf(root))
        adapt(control);
}
