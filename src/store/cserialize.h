#ifndef CSERIALIZE_H
#define CSERIALIZE_H

// A settings document: a file (or a memory buffer) of Windows-1251 XML held
// in memory as a tag tree. Nothing is written until save().
//
// Opening a file that does not exist creates it empty; an empty file or
// buffer gives an empty document (saving it writes only the declaration).
// A parse error, a document without an element, a DOCTYPE or nesting deeper
// than CXmlDefaultHandler::nMaxDepth fail the open and leave the file as it
// was. Saving goes through QSaveFile, so an interrupted save leaves the
// previous file whole.

#include "store/cfxxmlistltag.h"

#include <QByteArray>
#include <QString>

class CXmlTagV2;

class CSerialize
{
public:
    CSerialize() = default;
    ~CSerialize();
    CSerialize(const CSerialize&) = delete;
    CSerialize& operator=(const CSerialize&) = delete;

    bool openFile(const QString& qsFileName);
    bool openData(const QByteArray& data);
    const QString& fileName() const { return m_qsFileName; }
    QString errorString() const { return m_qsError; }

    const CFxXmListlTag& topTags() const { return m_top; }
    CXmlTagV2* root() const { return m_top.getNumTag(0); }
    // The top-level element called qsName. The document keeps one root: the
    // root answers to its own name, any other name is found (or, with
    // bCreate, appended) among the root's children. An empty document gets
    // the asked element as its root.
    CXmlTagV2* topNode(const QString& qsName, bool bCreate);

    // Removes every attribute and child of tag. The children stay allocated
    // (detached) until the document is destroyed, so cursors still holding
    // them are recognised by isGoodTag instead of dangling.
    void clearTag(CXmlTagV2* tag);
    bool isGoodTag(const CXmlTagV2* tag) const;

    QByteArray render() const;
    // Renders into a buffer the document keeps until the next call.
    const QByteArray& renderToBuffer();
    bool save();
    // Saves to another file, which becomes the document's file when the save
    // succeeds.
    bool saveAs(const QString& qsFileName);

private:
    bool parse(const QByteArray& data);

    QString m_qsFileName;
    QString m_qsError;
    CFxXmListlTag m_top;
    CFxXmListlTag m_detached;
    QByteArray m_rendered;
};

// Low-level entry points. Names are Windows-1251 bytes.
struct coreSzCreate
{
    char szFileName[256];     // in: NUL-terminated file name
    CSerialize* lpSerialize;  // out: the document, null when the open failed
};

struct coreSzMemo
{
    const char* lpData;       // in (StartSZMemo) / out (GetSZMemo)
    int nSize;
    CSerialize* lpSerialize;  // out of StartSZMemo
};

bool zor_StartSZ(coreSzCreate* lpCreate);
// Saves the document to its file when bSave, then destroys it. False when
// the save failed (the document is destroyed all the same).
bool zor_StopSZ(CSerialize* lpSerialize, bool bSave);

bool zor_StartSZMemo(coreSzMemo* lpMemo);
// Renders the document; lpMemo->lpData points into a buffer the document
// owns, valid until the next zor_GetSZMemo or zor_StopSZMemo on it.
bool zor_GetSZMemo(CSerialize* lpSerialize, coreSzMemo* lpMemo);
void zor_StopSZMemo(CSerialize* lpSerialize);

#endif
