#pragma once

#include "documents/Database.h"
#include "documents/DatabaseApplet.h"
#include "documents/DocumentRecord.h"
#include "support/AppletTestHost.h"

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
};
