#ifndef ZOR_CONFIGDOCUMENT_H
#define ZOR_CONFIGDOCUMENT_H

// One settings document edited by every settings form: what the
// configuration window shows and what `zor-tool config` runs without a
// display. It creates the forms of zorConfigPages(), routes their user
// parameters to one registry, applies the terminal profile, and loads and
// saves the document through the store.
//
//   ZOR_ConfigDocument doc;
//   doc.createForms();                  // hidden forms (zor-tool), or give a parent
//   if (!doc.load("cfg.xml")) qWarning() << doc.errorString();
//   doc.save("cfg.xml");                // atomic; the old file stays whole on failure
//
// The document's top element is "CONFIG" (qsRootName); each form gets a
// cursor on it and keeps its own nodes below it, or, when its page names an
// element (lpNode), a cursor on that element. Nodes no form knows are kept
// as they are.

#include "config/zor_configpages.h"
#include "config/zor_configproblems.h"
#include "config/zor_terminalprofile.h"

#include <QObject>
#include <QString>
#include <QVector>

#include <memory>

class CSerialize;
class CXMLWorkData;
class QWidget;
class ZOR_Form_Config;
class ZOR_UserParamRegistry;

class ZOR_ConfigDocument : public QObject
{
    Q_OBJECT
public:
    static const char* const qsRootName;

    explicit ZOR_ConfigDocument(QObject* parent = nullptr);
    ~ZOR_ConfigDocument() override;

    // Creates one form per page (children of lpParent when given, otherwise
    // owned by the document; each form builds and translates itself in its
    // constructor), routes the user parameters, applies the profile and
    // starts a new document.
    void createForms(QWidget* lpParent = nullptr);
    // The same for another set of pages (tests, tools that need fewer forms).
    void createForms(QWidget* lpParent, const QVector<ZOR_ConfigPage>& pages);
    const QVector<ZOR_Form_Config*>& forms() const { return m_forms; }
    ZOR_Form_Config* form(const QString& qsId) const;
    ZOR_UserParamRegistry* userParams() const { return m_lpRegistry; }

    const ZOR_TerminalProfile& profile() const { return m_profile; }
    void setProfile(const ZOR_TerminalProfile& profile);

    // Every form's defaults, no file.
    void newDocument();
    enum ForeignRoot {
        RefuseForeign, // a top element other than CONFIG fails the load
        ReadForeign // the forms read it, into a new untitled document
    };
    // Reads the file into every form. False (forms and the current document
    // unchanged) when the file is missing or cannot be read or parsed, or
    // (RefuseForeign) is not a configuration: isForeign() then tells so.
    // With ReadForeign the file never becomes the document's file, so no
    // save can merge the configuration into a foreign document.
    bool load(const QString& qsFileName, ForeignRoot foreign = RefuseForeign);
    // The last load() met a top element other than CONFIG.
    bool isForeign() const { return m_bForeign; }
    // What the last load() did not keep as written, in document order.
    const QVector<ZOR_ConfigProblems::Problem>& problems() const { return m_problems.list(); }
    // Every form written into a new document, the rest of this one left out.
    std::unique_ptr<CSerialize> writeFresh();
    // Puts back a state render() gave (undo, redo): the forms read it, the
    // file name stays. False when the bytes do not parse.
    bool restore(const QByteArray& bytes);
    // Every value a binding row shows, in page order: its node, attribute
    // and widget. Found by reading what render() gives back into the forms.
    QVector<ZOR_ConfigProblems::Read> settingWidgets();
    // The bytes of every form's defaults; the forms show what they showed.
    QByteArray renderDefaults();
    // The page (index in the page list) a widget of some form is on; -1 when none.
    int pageOf(const QWidget* lpWidget) const;
    const QVector<ZOR_ConfigPage>& pages() const { return m_pages; }
    // Writes every form into the document and saves it to qsFileName (the
    // current file when empty). False when the save failed: the file on disk
    // is as it was.
    bool save(const QString& qsFileName = QString());
    // The bytes save() would write, without touching any file; empty (and
    // errorString) when the document could not be saved.
    QByteArray render();

    QString fileName() const { return m_qsFileName; }
    QString errorString() const { return m_qsError; }
    // The file was changed by another program since it was loaded or last
    // saved: save() to it is refused until acceptDiskState() (overwrite).
    bool changedOnDisk() const;
    void acceptDiskState();
    // Comments and processing instructions of the loaded file, which a save
    // does not keep.
    int droppedMarkup() const;
    bool isModified() const { return m_bModified; }
    void setModified(bool bModified);
    bool isLoading() const { return m_nLoading > 0; }

    void translateForms();

signals:
    void signal_ModifiedChanged(bool bModified);

private:
    void writeForms();
    void readForms();
    void checkLoaded(bool bEmpty);
    void readForm(int nIndex, CXMLWorkData* lpRoot);
    void writeFormsTo(CXMLWorkData* lpRoot);
    void attach(std::unique_ptr<CSerialize> doc, const QString& qsFileName);

    QVector<ZOR_Form_Config*> m_forms;
    QVector<ZOR_ConfigPage> m_pages;
    QVector<ZOR_Form_Config*> m_owned;
    ZOR_UserParamRegistry* m_lpRegistry = nullptr;
    std::unique_ptr<CSerialize> m_doc;
    ZOR_TerminalProfile m_profile;
    QString m_qsFileName;
    QString m_qsError;
    bool m_bModified = false;
    bool m_bForeign = false;
    int m_nLoading = 0;
    ZOR_ConfigProblems m_problems;
};

#endif
