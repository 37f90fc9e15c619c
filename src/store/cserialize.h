#ifndef CSERIALIZE_H
#define CSERIALIZE_H

// A settings document: a file (or a memory buffer) of XML held in memory as
// a tag tree. Nothing is written until save().
//
// Opening a file that does not exist creates it empty; an empty file or
// buffer, or one holding only the declaration, gives an empty document
// (saving it writes only the declaration). A parse error, a DOCTYPE,
// nesting deeper than CXmlDefaultHandler::nMaxDepth, a control character,
// an unknown encoding or a file larger than nMaxDocumentBytes fail the open
// and leave the file as it was; errorString() says why.
//
// Encoding: the declared one (or a UTF-8 byte-order mark) is honoured when
// reading and kept when saving. Windows-1251 goes through the module's own
// rule; a document without a declaration is UTF-8 when its bytes are valid
// UTF-8 holding non-ASCII, otherwise Windows-1251.
//
// Saving refuses, with the element and the character named in
// errorString(), any tree whose rendering would not read back as the same
// tree: the writer checks each name and text against the reader's rules as
// it escapes them (and a rendering in a codec other than Windows-1251 or
// UTF-8 is read again in full) before the file is touched. It goes through QSaveFile and never writes in place, so a
// failed or interrupted save leaves the previous file whole; the message
// carries the system's reason ("No space left on device").
//
// Saves are safe against each other: a save holds a QLockFile beside the
// file ("NAME.lock"; a lock left by a program that died is taken over) and
// refuses, saying it "changed since it was opened", to replace a file that
// another program replaced or changed after this document read it. A
// read-modify-write holds the lock from before the read (lockForUpdate)
// until the document is closed, so concurrent updates queue instead of
// losing each other.

#include "store/cfxxmlistltag.h"
#include "store/xmlwriter.h"

#include <QByteArray>
#include <QLockFile>
#include <QString>

#include <memory>

class CXmlTagV2;

class CSerialize
{
public:
    // Larger files are refused rather than read: the tree of a document
    // takes several times its size in memory.
    static constexpr qint64 nMaxDocumentBytes = 256 * 1024 * 1024;

    CSerialize() = default;
    ~CSerialize();
    CSerialize(const CSerialize&) = delete;
    CSerialize& operator=(const CSerialize&) = delete;

    // A missing file is created empty, unless bCreateMissing is false (a
    // reader that must leave the disk alone): then it is an error.
    bool openFile(const QString& qsFileName, bool bCreateMissing = true);
    // Takes the file's lock (waiting at most msTimeout) and keeps it until
    // unlock() or the document's end; call before openFile for a
    // read-modify-write. False (errorString) when another program holds it;
    // true without a lock where none can be made (a read-only folder).
    bool lockForUpdate(const QString& qsFileName, int msTimeout = 10000);
    void unlock();
    // True when the file on disk is no longer the one that was read (or
    // last saved).
    bool changedOnDisk() const;
    // Lets the next save replace the file as it now is on disk (the user
    // chose to overwrite another program's change).
    void acceptDiskState();
    // This document (read from memory) takes the place of previous: it
    // keeps previous's file, what was known of it on disk and its count of
    // dropped markup, so an undone edit is saved with the same checks.
    void continueFrom(const CSerialize& previous);
    bool openData(const QByteArray& data);
    const QString& fileName() const { return m_qsFileName; }
    QString errorString() const { return m_qsError; }
    const XmlWriter::Encoding& encoding() const { return m_encoding; }
    // Comments and processing instructions met while reading; the tree does
    // not keep them, so a save drops them.
    int droppedMarkup() const { return m_nDroppedMarkup; }
    // Documents of the usual shape are read by XmlFastReader, the rest by
    // the SAX reader; off, every document goes to the SAX reader (to
    // compare the two).
    void setFastReader(bool bOn) { m_bFastReader = bOn; }

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
    // Takes tag (and its subtree) out of the document, kept detached like
    // the children of a cleared tag.
    void removeTag(CXmlTagV2* tag);

    // The bytes of the document, unchecked (what the writer gives).
    QByteArray render() const;
    // The bytes, or false (errorString) when they would not read back as
    // this tree.
    bool renderChecked(QByteArray& out);
    // Renders into a buffer the document keeps until the next call; null
    // when the document cannot be rendered faithfully.
    const QByteArray* renderToBuffer();
    bool save();
    // Saves to another file, which becomes the document's file when the save
    // succeeds.
    bool saveAs(const QString& qsFileName);

private:
    bool parse(QByteArray data);
    bool fail(const QString& qsError);
    bool writeFile(const QByteArray& bytes);
    // Identity of the file on disk: replaced, rewritten or touched files
    // differ.
    struct DiskState
    {
        bool exists = false;
        quint64 device = 0, inode = 0;
        qint64 size = 0, mtimeNs = 0;
        bool operator==(const DiskState& o) const;
    };
    static DiskState diskState(const QString& qsFileName);

    QString m_qsFileName;
    QString m_qsError;
    XmlWriter::Encoding m_encoding;
    int m_nDroppedMarkup = 0;
    bool m_bFastReader = true;
    CFxXmListlTag m_top;
    CFxXmListlTag m_detached;
    QByteArray m_rendered;
    DiskState m_disk;
    bool m_bDiskKnown = false;
    std::unique_ptr<QLockFile> m_lock;
};

// Low-level entry points. File names are in the file system's encoding
// (QFile::decodeName).
struct coreSzCreate
{
    char szFileName[256]; // in: NUL-terminated file name
    CSerialize* lpSerialize; // out: the document, null when the open failed
};

struct coreSzMemo
{
    const char* lpData; // in (StartSZMemo) / out (GetSZMemo)
    int nSize;
    CSerialize* lpSerialize; // out of StartSZMemo
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
