#pragma once

#include "documents/Database.h"
#include "documents/DatabaseApplet.h"
#include "documents/DocumentRecord.h"
#include "support/AppletTestHost.h"

#include <QTest>

// The word-processor applet in a main window stand-in, loaded as the real
// window loads it; open() shows a document as the host does.
struct WordProcessorHost
{
    AppletTestHost host;
    DatabaseApplet *applet = new DatabaseApplet(&host);
    DocumentRecord record;

    WordProcessorHost()
    {
        applet->setGeometry(0, 0, 1100, 880);
        applet->Load();
        applet->Reload();
    }

    // Shown and active, as the main window is.
    bool showActive()
    {
        host.show();
        host.activateWindow();
        return QTest::qWaitForWindowActive(&host);
    }

    void open(const DocumentRecord &document = Database::NewDocument(Database::BlankTemplate))
    {
        record = document;
        applet->setRecord(&record);
        applet->setDocument(10);
        applet->Start();
    }

    // A box of the given kind, placed in centimetres.
    static DocumentItem box(qint32 kind, float left, float top, float width, float height)
    {
        return DocumentItem{.Left = left, .Top = top, .Width = width, .Height = height, .Kind = kind};
    }

    // A blank document with these boxes after its first one.
    static DocumentRecord withBoxes(const QList<DocumentItem> &boxes)
    {
        DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
        record.page(1).Items += boxes;
        record.page(1).ItemCount = record.page(1).Items.size();
        return record;
    }
};
