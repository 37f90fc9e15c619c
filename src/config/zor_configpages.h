#ifndef ZOR_CONFIGPAGES_H
#define ZOR_CONFIGPAGES_H

// Every settings form a configuration is made of, in page order. The
// configuration window shows one page per entry and `zor-tool config` loads
// and saves the same forms; adding a form to both is one line in
// zor_configpages.cpp.

#include <QVector>

class QWidget;
class ZOR_Form_Config;

struct ZOR_ConfigPage
{
    const char* lpId; // stable name ("protocol"), used by options and tests
    const char* lpCaptionKey; // language key of the page list entry
    ZOR_Form_Config* (*create)(QWidget* parent);
    // Forms that consume what other forms publish (the field-set form's
    // user parameters) are loaded after every other form.
    bool bLoadLast = false;
    // The element below the document's top that the form is handed (opened
    // without creating it to read, created and cleared to write); null: the
    // form gets the top element itself and keeps its own nodes below it.
    const char* lpNode = nullptr;
};

const QVector<ZOR_ConfigPage>& zorConfigPages();

template <typename Form>
ZOR_Form_Config* zorCreateConfigForm(QWidget* parent)
{
    return new Form(parent);
}

#endif
