#include "app/FontAdapter.h"

#include <QApplication>
#include <QFontDatabase>
#include <QScreen>
#include <QWidget>

namespace {

// The shared interface state: 0 until first computed.
float screenScale = 0.0f;
bool meiryoInstalled = false;

const QString Meiryo = QStringLiteral("メイリオ");
const QString Tahoma = QStringLiteral("Tahoma");
const QString UiGothic = QStringLiteral("MS UI Gothic");
constexpr int ShiftJisCharset = 128;

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
    meiryoInstalled = QFontDatabase::families().contains(Meiryo);
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
    meiryoInstalled = false;
}

FontAdapter::Faces FontAdapter::installedFaces()
{
    const QStringList families = QFontDatabase::families();
    return Faces{MeiryoInstalled(), families.contains(Tahoma)};
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
    InterfaceFont value{font.family(), font.pointSizeF(), object->property("Charset").toInt()};
    const QString before = value.name;
    adaptFont(value, installedFaces(), scale);
    if (value.name == before && value.size == font.pointSizeF() && value.charset == object->property("Charset").toInt())
        return;
    font.setFamily(value.name);
    if (value.size > 0)
        font.setPointSizeF(value.size);
    object->setFont(font);
    object->setProperty("Charset", value.charset);
}

void FontAdapter::adaptAll()
{
    for (QWidget *window : QApplication::topLevelWidgets())
        adaptTree(window);
}

void FontAdapter::adaptTree(QWidget *root)
{
    adapt(root);
    for (QWidget *control : root->findChildren<QWidget *>())
        adapt(control);
}
