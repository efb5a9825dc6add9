#pragma once

#include <QDir>
#include <QString>
#include <QTest>

// A golden-file folder, tests/data/<folder>: one data row, named after the
// file, per input file ending in .<extension>, in a column "file" holding its
// path. The expected result lies beside it under the same name.
inline void addGoldenRows(const QString &folder, const QString &extension)
{
    QTest::addColumn<QString>("file");
    const QDir data(QStringLiteral(LANTERN_SOURCE_DIR "/tests/data/") + folder);
    const QFileInfoList files = data.entryInfoList({QStringLiteral("*.") + extension}, QDir::Files, QDir::Name);
    QVERIFY2(!files.isEmpty(), qPrintable(data.path()));
    for (const QFileInfo &file : files)
        QTest::newRow(qPrintable(file.completeBaseName())) << file.filePath();
}

// The path of the file beside it with the other extension.
inline QString goldenBeside(const QString &file, const QString &extension)
{
    return file.left(file.lastIndexOf(QLatin1Char('.')) + 1) + extension;
}
