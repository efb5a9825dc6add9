#pragma once

#include "support/FileBytes.h"

#include <QDir>
#include <QTest>

// A table of cases in tests/data/<folder>/*.txt: every line that is neither
// empty nor a "#" comment is what is asked, " => " and the exact answer (a
// backslash and t, r or n stand for a tab, a carriage return or a line feed). One data row per line,
// named after its file and what is asked, in the columns "asked" and "answer".
// Fewer than `atLeast` rows, or a line without its answer, fail.
inline void addCaseRows(const QString &folder, int atLeast)
{
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("answer");
    const auto unescaped = [](QString text) {
        text.replace(QStringLiteral("\\t"), QStringLiteral("\t")).replace(QStringLiteral("\\r"), QStringLiteral("\r"));
        return text.replace(QStringLiteral("\\n"), QStringLiteral("\n"));
    };
    const QDir data(QStringLiteral(LANTERN_SOURCE_DIR "/tests/data/") + folder);
    int rows = 0;
    for (const QFileInfo &file : data.entryInfoList({QStringLiteral("*.txt")}, QDir::Files, QDir::Name)) {
        for (const QString &line : QString::fromUtf8(fileBytes(file.filePath())).split(u'\n')) {
            if (line.isEmpty() || line.startsWith(u'#'))
                continue;
            const qsizetype arrow = line.indexOf(u" =>");
            QVERIFY2(arrow >= 0, qPrintable(line));
            QTest::addRow("%s %s", qPrintable(file.baseName()), qPrintable(line.left(arrow)))
                << unescaped(line.left(arrow)) << unescaped(line.mid(arrow + 4));
            ++rows;
        }
    }
    QVERIFY2(rows >= atLeast, qPrintable(data.path()));
}
