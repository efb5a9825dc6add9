#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

// The design names Windows faces ("MS UI Gothic", "ＭＳ 明朝"...) that a Linux
// machine does not have. The names stay in the program as they are; this is the
// one place that says which installed Japanese face stands in for each.
class FontSubstitution
{
public:
    // The installed family to draw a design face with: the face itself when it
    // is installed, else the first installed stand-in, else the name unchanged
    // (Qt's own fallback then picks something).
    static QString family(const QString &designFace);

    // The stand-ins for a design face, best first (empty for faces we do not map).
    static QStringList standIns(const QString &designFace);

    // A font for a design face at a point size, drawing with its stand-in.
    static QFont font(const QString &designFace, qreal pointSize);

    // Registers every stand-in with Qt's substitution table, so that a plain
    // QFont("MS UI Gothic") anywhere in the program finds a Japanese face.
    static void install();
};
