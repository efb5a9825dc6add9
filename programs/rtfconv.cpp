// rtfconv: shows what the RTF reader makes of a file.
//   rtfconv --text FILE   the plain text in UTF-8, one paragraph a line
//   rtfconv --rtf FILE    the RTF the writer makes from what was read
// FILE is an RTF file or a saved document (a header line with the quoted
// title and the save time, then the RTF body).

#include "platform/rtf/RtfReader.h"
#include "platform/rtf/RtfWriter.h"

#include <QCoreApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QTextDocument>

#include <cstdio>

namespace {

int usage()
{
    std::fputs("usage: rtfconv --text FILE | --rtf FILE\n", stderr);
    return 2;
}

void fail(const QString &file, const QString &message)
{
    std::fprintf(stderr, "rtfconv: %s: %s\n", qPrintable(file), qPrintable(message));
}

// A saved document's body: everything after the header line. The document
// store keeps a line end between the body's lines, and the reader takes a
// line end as the end of a control word and as no text, so they stay here too.
QByteArray bodyOfDocument(const QByteArray &file)
{
    const qsizetype headerEnd = file.indexOf('\n');
    if (headerEnd < 0)
        return QByteArray();
    return file.mid(headerEnd + 1);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    // The reader notes problems in the runtime log; here they are reported once, below.
    QLoggingCategory::setFilterRules(QStringLiteral("lantern.runtime.warning=false"));
    const QStringList arguments = app.arguments();
    if (arguments.size() != 3 || (arguments.at(1) != "--text" && arguments.at(1) != "--rtf"))
        return usage();
    const bool asText = arguments.at(1) == "--text";
    const QString path = arguments.at(2);

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        fail(path, file.errorString());
        return 1;
    }
    const QByteArray contents = file.readAll();

    QByteArray rtf;
    if (RtfReader::looksLikeRtf(contents)) {
        rtf = contents;
    } else if (contents.startsWith('"')) {
        rtf = bodyOfDocument(contents);
    } else {
        fail(path, QStringLiteral("neither RTF nor a saved document"));
        return 1;
    }

    QTextDocument document;
    // A saved document with an empty body is a blank document.
    if (!rtf.trimmed().isEmpty()) {
        QString error;
        if (!RtfReader::read(rtf, &document, &error)) {
            fail(path, error);
            return 1;
        }
    }

    if (asText) {
        QString text = document.toPlainText();
        if (!text.isEmpty())
            text += u'\n';
        const QByteArray utf8 = text.toUtf8();
        std::fwrite(utf8.constData(), 1, utf8.size(), stdout);
    } else {
        const QByteArray out = RtfWriter::write(&document);
        std::fwrite(out.constData(), 1, out.size(), stdout);
    }
    return 0;
}
