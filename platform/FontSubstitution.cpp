#include "platform/FontSubstitution.h"

#include <QFontDatabase>
#include <QHash>

namespace {

// IPA faces first: their glyphs come back from PDF text extraction as the
// characters they were, where Noto CJK sometimes yields Kangxi radicals.
const QStringList proportionalGothic = {QStringLiteral("IPAexGothic"), QStringLiteral("IPAPGothic"),
                                        QStringLiteral("Noto Sans CJK JP")};
const QStringList fixedGothic = {QStringLiteral("IPAGothic"), QStringLiteral("Noto Sans Mono CJK JP"),
                                 QStringLiteral("IPAexGothic"), QStringLiteral("Noto Sans CJK JP")};
const QStringList proportionalMincho = {QStringLiteral("IPAexMincho"), QStringLiteral("IPAPMincho"),
                                        QStringLiteral("Noto Serif CJK JP")};
const QStringList fixedMincho = {QStringLiteral("IPAMincho"), QStringLiteral("IPAexMincho"),
                                 QStringLiteral("Noto Serif CJK JP")};

const QHash<QString, QStringList> &table()
{
    static const QHash<QString, QStringList> faces = {
        {QStringLiteral("MS UI Gothic"), proportionalGothic},
        {QStringLiteral("ＭＳ Ｐゴシック"), proportionalGothic},
        {QStringLiteral("ＭＳ ゴシック"), fixedGothic},
        {QStringLiteral("メイリオ"), proportionalGothic},
        // Windows draws Japanese in Tahoma by linking it to a Japanese face.
        {QStringLiteral("Tahoma"), proportionalGothic},
        {QStringLiteral("ＭＳ Ｐ明朝"), proportionalMincho},
        {QStringLiteral("ＭＳ 明朝"), fixedMincho},
    };
    return faces;
}

} // namespace

QStringList FontSubstitution::standIns(const QString &designFace)
{
    return table().value(designFace);
}

QString FontSubstitution::family(const QString &designFace)
{
    // Asking the font database is slow and the installed faces do not change
    // while the program runs: each answer is kept.
    static QHash<QString, QString> found;
    const auto known = found.constFind(designFace);
    if (known != found.cend())
        return known.value();

    QString result = designFace;
    if (!QFontDatabase::hasFamily(designFace)) {
        for (const QString &candidate : standIns(designFace)) {
            if (QFontDatabase::hasFamily(candidate)) {
                result = candidate;
                break;
            }
        }
    }
    found.insert(designFace, result);
    return result;
}

QFont FontSubstitution::font(const QString &designFace, qreal pointSize)
{
    QFont result(family(designFace));
    if (pointSize > 0)
        result.setPointSizeF(pointSize);
    return result;
}

void FontSubstitution::install()
{
    for (auto it = table().cbegin(); it != table().cend(); ++it)
        QFont::insertSubstitutions(it.key(), it.value());
}
