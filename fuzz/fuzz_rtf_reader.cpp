// Any bytes into the RTF reader; whatever it makes must be written and read
// back to the same text.
// Fuzz library: lantern_core

#include "platform/rtf/RtfReader.h"
#include "platform/rtf/RtfWriter.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTextDocument>

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    // Damaged input is the rule here: its notes would only slow the runs down.
    QLoggingCategory::setFilterRules(QStringLiteral("lantern.runtime.warning=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input = QByteArray::fromRawData(reinterpret_cast<const char *>(data),
                                                     static_cast<qsizetype>(size));
    QTextDocument document;
    RtfReader::read(input, &document);

    const QByteArray written = RtfWriter::write(&document);
    QTextDocument again;
    QString error;
    if (!RtfReader::read(written, &again, &error)) {
        std::fprintf(stderr, "the writer's own RTF did not read back: %s\n", qPrintable(error));
        std::abort();
    }
    const QString before = document.toPlainText();
    const QString after = again.toPlainText();
    if (after != before || again.blockCount() != document.blockCount()) {
        qsizetype at = 0;
        while (at < before.size() && at < after.size() && before[at] == after[at])
            ++at;
        std::fprintf(stderr, "the text changed on its way through the writer: %d blocks became %d;"
                             " from character %lld: %s became %s\n",
                     document.blockCount(), again.blockCount(), static_cast<long long>(at),
                     before.mid(at, 8).toUtf8().toHex(' ').constData(),
                     after.mid(at, 8).toUtf8().toHex(' ').constData());
        std::abort();
    }
    return 0;
}
