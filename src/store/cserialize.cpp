#include "store/cserialize.h"

#include "store/cxmldefaulthandler.h"
#include "store/cxmltagv2.h"
#include "store/xmlfastreader.h"
#include "module/zor_cp1251.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTextCodec>
#include <QXmlInputSource>
#include <QXmlSimpleReader>

#include <cctype>
#include <cerrno>
#include <cstring>
#include <new>
#include <vector>

#include <sys/stat.h>

QT_WARNING_DISABLE_DEPRECATED

namespace {

const char kUtf8Bom[] = "\xEF\xBB\xBF";

bool isCp1251Name(const QByteArray& name)
{
    const QByteArray n = name.toLower();
    return n == "windows-1251" || n == "cp1251" || n == "x-cp1251";
}

bool isValidUtf8(const QByteArray& data, bool* nonAscii)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForMib(106)->toUnicode(data.constData(), data.size(), &state);
    *nonAscii = std::any_of(data.cbegin(), data.cend(), [](char c) { return (c & 0x80) != 0; });
    return state.invalidChars == 0 && state.remainingChars == 0;
}

// The encoding of the bytes (without a byte-order mark): enc.codec stays
// null for the module's own Windows-1251 rule.
bool detectEncoding(const QByteArray& data, XmlWriter::Encoding& enc, QString& error)
{
    static const QRegularExpression declaration(
        QStringLiteral("^<\\?xml[^>]*?encoding\\s*=\\s*[\"']([A-Za-z0-9._:-]+)[\"']"));
    const QByteArray head = data.left(256);
    const QRegularExpressionMatch m = declaration.match(QString::fromLatin1(head));
    if (m.hasMatch()) {
        enc.name = m.captured(1).toLatin1();
    } else if (enc.bom) {
        enc.name = "UTF-8";
    } else {
        bool nonAscii = false;
        enc.name = isValidUtf8(data, &nonAscii) && nonAscii ? QByteArray("UTF-8") : QByteArray("windows-1251");
    }
    if (isCp1251Name(enc.name)) {
        if (enc.bom) {
            error = QStringLiteral("the file starts with a UTF-8 byte-order mark but declares %1")
                        .arg(QString::fromLatin1(enc.name));
            return false;
        }
        enc.codec = nullptr;
        return true;
    }
    enc.codec = QTextCodec::codecForName(enc.name);
    if (!enc.codec) {
        error = QStringLiteral("the encoding \"%1\" is not known").arg(QString::fromLatin1(enc.name));
        return false;
    }
    if (enc.codec->fromUnicode(QStringLiteral("<?xml &\"=>")) != "<?xml &\"=>") {
        error = QStringLiteral("the encoding \"%1\" is not supported for settings documents")
                    .arg(QString::fromLatin1(enc.name));
        return false;
    }
    if (enc.bom && !enc.isUtf8()) {
        error = QStringLiteral("the file starts with a UTF-8 byte-order mark but declares %1")
                    .arg(QString::fromLatin1(enc.name));
        return false;
    }
    return true;
}

// Turns the bytes into text piece by piece; a codec's state runs across the
// pieces, so a character split between two of them is whole.
class TextDecoder
{
public:
    explicit TextDecoder(const XmlWriter::Encoding& enc)
        : m_enc(enc)
    {
    }
    QString decode(const char* lpData, int nSize)
    {
        if (!m_enc.codec)
            return ZOR_Cp1251::decode(lpData, nSize);
        return m_enc.codec->toUnicode(lpData, nSize, &m_state);
    }
    // False (error) once bytes were met that are no text in the encoding.
    bool valid(QString& error, bool atEnd) const
    {
        if (!m_enc.codec || (m_state.invalidChars == 0 && (!atEnd || m_state.remainingChars == 0)))
            return true;
        error = QStringLiteral("the bytes are not valid %1").arg(QString::fromLatin1(m_enc.name));
        return false;
    }

private:
    const XmlWriter::Encoding& m_enc;
    QTextCodec::ConverterState m_state;
};

// The encoding of the bytes (without a byte-order mark) and their text.
bool decodeText(const QByteArray& data, XmlWriter::Encoding& enc, QString& text, QString& error)
{
    if (!detectEncoding(data, enc, error))
        return false;
    TextDecoder decoder(enc);
    text = decoder.decode(data.constData(), data.size());
    return decoder.valid(error, true);
}

// Only the declaration (and blanks): what an empty document saves as. The
// bytes of every accepted encoding hold ASCII as ASCII.
bool onlyDeclaration(const QByteArray& bytes)
{
    const int end = bytes.indexOf("?>");
    if (end < 0)
        return false;
    for (int i = end + 2; i < bytes.size(); ++i)
        if (!std::isspace(static_cast<unsigned char>(bytes.at(i))))
            return false;
    static const QRegularExpression re(QStringLiteral("^\\s*<\\?xml[^<>]*\\?>$"));
    return re.match(QString::fromLatin1(bytes.constData(), end + 2)).hasMatch();
}

// Hands the reader the text a piece at a time, decoded when it asks for
// more, so that the whole text is never held beside the tree being built
// (it would double the memory a load needs).
class PieceSource : public QXmlInputSource
{
public:
    PieceSource(const QByteArray& bytes, const XmlWriter::Encoding& enc)
        : m_bytes(bytes)
        , m_decoder(enc)
    {
    }
    void fetchData() override
    {
        const int kPiece = 1 << 20;
        const int n = m_decodeError.isEmpty() ? qMin(kPiece, m_bytes.size() - m_at) : 0;
        setData(n > 0 ? m_decoder.decode(m_bytes.constData() + m_at, n) : QString());
        m_at += n;
        if (!m_decoder.valid(m_decodeError, m_at >= m_bytes.size()))
            setData(QString());
    }
    QString decodeError() const { return m_decodeError; }

private:
    const QByteArray& m_bytes;
    TextDecoder m_decoder;
    int m_at = 0;
    QString m_decodeError;
};

bool parseBytes(
    const QByteArray& bytes, const XmlWriter::Encoding& enc, CFxXmListlTag& top, QString& error, int* dropped)
{
    PieceSource source(bytes, enc);
    CXmlDefaultHandler handler(top);
    QXmlSimpleReader reader;
    reader.setContentHandler(&handler);
    reader.setErrorHandler(&handler);
    reader.setLexicalHandler(&handler);
    reader.setDeclHandler(&handler);
    reader.setDTDHandler(&handler);
    // xmlns attributes are attributes like any other to the store.
    reader.setFeature(QStringLiteral("http://xml.org/sax/features/namespace-prefixes"), true);
    const bool ok = reader.parse(&source, false);
    if (dropped)
        *dropped = handler.droppedMarkup();
    if (!source.decodeError().isEmpty() || !ok || !handler.sawElement()) {
        error = !source.decodeError().isEmpty() ? source.decodeError()
            : ok                                ? QStringLiteral("the document has no element")
                                                : handler.errorText();
        if (error.isEmpty())
            error = QStringLiteral("not a settings document");
        top.deleteAll();
        return false;
    }
    return true;
}

// Reads a rendering back and checks it, event by event, against the tree
// it was rendered from (as the encoding stores it), without building a
// second tree. Uses the reader and the decoding of CXmlDefaultHandler.
class TreeVerifier : public QXmlDefaultHandler
{
public:
    TreeVerifier(const CFxXmListlTag& expected, const XmlWriter::Encoding& enc)
        : m_expected(expected)
        , m_enc(enc)
    {
    }

    bool startElement(const QString&, const QString&, const QString& qName, const QXmlAttributes& atts) override
    {
        const CFxXmListlTag& siblings = m_stack.empty() ? m_expected : m_stack.back().tag->children();
        int& next = m_stack.empty() ? m_nextTop : m_stack.back().next;
        const CXmlTagV2* tag = siblings.getNumTag(next++);
        if (!tag)
            return differ(m_stack.empty() ? nullptr : m_stack.back().tag, QStringLiteral("its child elements"));
        if (stored(tag->name()) != XmlWriter::decodeName(qName))
            return differ(tag, QStringLiteral("its name"));
        const QVector<CXmlAttribute>& attributes = tag->attributes();
        if (atts.count() != attributes.size())
            return differ(tag, QStringLiteral("its attributes"));
        for (int i = 0; i < attributes.size(); ++i) {
            if (stored(attributes.at(i).name) != XmlWriter::decodeName(atts.qName(i))
                || stored(attributes.at(i).value) != CXmlDefaultHandler::decodeValue(atts.value(i)))
                return differ(tag, QStringLiteral("attribute \"%1\"").arg(attributes.at(i).name));
        }
        m_text.clear();
        m_stack.push_back(Level{tag, 0});
        return true;
    }
    bool endElement(const QString&, const QString&, const QString&) override
    {
        const Level level = m_stack.back();
        m_stack.pop_back();
        if (level.next != level.tag->children().count())
            return differ(level.tag, QStringLiteral("its child elements"));
        if (level.next == 0 && stored(level.tag->value()) != CXmlDefaultHandler::decodeValue(m_text))
            return differ(level.tag, QStringLiteral("its text"));
        m_text.clear();
        return true;
    }
    bool characters(const QString& ch) override
    {
        if (!m_stack.empty() && m_stack.back().next == 0)
            m_text += ch;
        return true;
    }
    bool startDTD(const QString&, const QString&, const QString&) override
    {
        m_qsError = QStringLiteral("a document type declaration");
        return false;
    }
    bool fatalError(const QXmlParseException& exception) override
    {
        if (m_qsError.isEmpty())
            m_qsError = QStringLiteral("line %1, column %2: %3")
                            .arg(exception.lineNumber())
                            .arg(exception.columnNumber())
                            .arg(exception.message());
        return false;
    }
    QString errorString() const override { return m_qsError; }

    // Empty when the rendering reads back as the tree, else what differs.
    QString verify(const QString& text)
    {
        QXmlInputSource source;
        source.setData(text);
        QXmlSimpleReader reader;
        reader.setContentHandler(this);
        reader.setErrorHandler(this);
        reader.setLexicalHandler(this);
        reader.setDeclHandler(this);
        reader.setDTDHandler(this);
        reader.setFeature(QStringLiteral("http://xml.org/sax/features/namespace-prefixes"), true);
        if (!reader.parse(&source, false))
            return m_qsError.isEmpty() ? QStringLiteral("it is not well-formed") : m_qsError;
        if (m_nextTop != m_expected.count())
            return QStringLiteral("the document's elements");
        return QString();
    }

private:
    struct Level
    {
        const CXmlTagV2* tag;
        int next;
    };
    QString stored(const QString& s) const { return XmlWriter::storedText(s, m_enc); }
    bool differ(const CXmlTagV2* tag, const QString& what)
    {
        m_qsError = tag ? QStringLiteral("element \"%1\": %2").arg(XmlWriter::pathOf(tag), what) : what;
        return false;
    }

    const CFxXmListlTag& m_expected;
    const XmlWriter::Encoding& m_enc;
    std::vector<Level> m_stack;
    int m_nextTop = 0;
    QString m_text;
    QString m_qsError;
};

QString systemReason(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

} // namespace

CSerialize::~CSerialize() = default;

bool CSerialize::DiskState::operator==(const DiskState& o) const
{
    return exists == o.exists && device == o.device && inode == o.inode && size == o.size && mtimeNs == o.mtimeNs;
}

CSerialize::DiskState CSerialize::diskState(const QString& qsFileName)
{
    DiskState d;
    struct stat st
    {
    };
    if (::stat(QFile::encodeName(qsFileName).constData(), &st) != 0)
        return d;
    d.exists = true;
    d.device = quint64(st.st_dev);
    d.inode = quint64(st.st_ino);
    d.size = qint64(st.st_size);
    d.mtimeNs = qint64(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec;
    return d;
}

bool CSerialize::changedOnDisk() const
{
    return m_bDiskKnown && !(diskState(m_qsFileName) == m_disk);
}

void CSerialize::acceptDiskState()
{
    m_disk = diskState(m_qsFileName);
    m_bDiskKnown = true;
}

void CSerialize::continueFrom(const CSerialize& previous)
{
    m_qsFileName = previous.m_qsFileName;
    m_disk = previous.m_disk;
    m_bDiskKnown = previous.m_bDiskKnown;
    m_nDroppedMarkup = previous.m_nDroppedMarkup;
}

bool CSerialize::lockForUpdate(const QString& qsFileName, int msTimeout)
{
    unlock();
    auto lock = std::make_unique<QLockFile>(qsFileName + QStringLiteral(".lock"));
    // A save takes well under a second; a lock this old, or one whose
    // program is gone, was left behind.
    lock->setStaleLockTime(30000);
    if (lock->tryLock(msTimeout)) {
        m_lock = std::move(lock);
        return true;
    }
    const QString shown = QDir::toNativeSeparators(qsFileName);
    if (lock->error() == QLockFile::LockFailedError) {
        qint64 pid = 0;
        QString host, app;
        lock->getLockInfo(&pid, &host, &app);
        return fail(
            QStringLiteral("%1 is being changed by another program (process %2); try again").arg(shown).arg(pid));
    }
    // No lock can be made here (a read-only folder): no save can replace
    // the file either, and the save says why.
    return true;
}

void CSerialize::unlock()
{
    m_lock.reset();
}

bool CSerialize::fail(const QString& qsError)
{
    m_qsError = qsError;
    return false;
}

bool CSerialize::openFile(const QString& qsFileName, bool bCreateMissing)
{
    m_qsFileName = qsFileName;
    m_qsError.clear();
    m_top.deleteAll();
    const QString shown = QDir::toNativeSeparators(qsFileName);
    m_bDiskKnown = false;
    QFile file(qsFileName);
    if (!file.exists()) {
        if (!bCreateMissing)
            return fail(QStringLiteral("cannot read %1: there is no such file").arg(shown));
        if (!file.open(QIODevice::WriteOnly))
            return fail(QStringLiteral("cannot create %1: %2").arg(shown, file.errorString()));
        file.close();
        acceptDiskState();
        return true;
    }
    // A FIFO would block the open until a writer comes, a device never end.
    if (!QFileInfo(qsFileName).isFile())
        return fail(QStringLiteral("cannot read %1: it is not a regular file").arg(shown));
    // Taken before the bytes are read: a change made while they are read
    // makes the state differ at the save.
    const DiskState before = diskState(qsFileName);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("cannot read %1: %2").arg(shown, file.errorString()));
    const qint64 size = file.size();
    if (size > nMaxDocumentBytes)
        return fail(QStringLiteral("%1 is %2 bytes; settings documents over %3 MiB are not opened")
                        .arg(shown)
                        .arg(size)
                        .arg(nMaxDocumentBytes >> 20));
    QByteArray data;
    try {
        data.resize(int(size));
    } catch (const std::bad_alloc&) {
        return fail(QStringLiteral("not enough memory to read %1 (%2 bytes)").arg(shown).arg(size));
    }
    qint64 got = 0;
    while (got < size) {
        const qint64 n = file.read(data.data() + got, size - got);
        if (n <= 0)
            break;
        got += n;
    }
    if (got != size || file.read(1).size() != 0)
        return fail(QStringLiteral("cannot read %1: got %2 of its %3 bytes%4")
                        .arg(shown)
                        .arg(got)
                        .arg(size)
                        .arg(file.error() != QFileDevice::NoError ? QStringLiteral(" (%1)").arg(file.errorString())
                                                                  : QString()));
    file.close();
    if (!parse(std::move(data))) {
        m_qsError = QStringLiteral("%1: %2").arg(shown, m_qsError);
        return false;
    }
    m_disk = before;
    m_bDiskKnown = true;
    return true;
}

bool CSerialize::openData(const QByteArray& data)
{
    m_qsError.clear();
    m_bDiskKnown = false;
    return parse(data);
}

bool CSerialize::parse(QByteArray data)
{
    m_top.deleteAll();
    m_encoding = XmlWriter::Encoding();
    m_nDroppedMarkup = 0;
    if (data.isEmpty())
        return true;
    const int size = data.size();
    // Parsed a piece at a time from the bytes (see parseBytes).
    QByteArray body = std::move(data);
    if (body.startsWith(kUtf8Bom)) {
        m_encoding.bom = true;
        body.remove(0, 3);
    } else if (body.startsWith("\xFF\xFE") || body.startsWith("\xFE\xFF")) {
        return fail(QStringLiteral("UTF-16 documents are not supported"));
    }
    // Control characters other than tab and line ends are not text in any
    // settings document; the reader would let some of them through.
    for (int i = 0; i < body.size(); ++i) {
        const unsigned char b = static_cast<unsigned char>(body.at(i));
        if (b < 0x20 && b != '\t' && b != '\n' && b != '\r')
            return fail(QStringLiteral("byte 0x%1 at offset %2 is not text")
                            .arg(int(b), 2, 16, QLatin1Char('0'))
                            .arg(i + (m_encoding.bom ? 3 : 0)));
    }
    try {
        if (!detectEncoding(body, m_encoding, m_qsError))
            return false;
        if (onlyDeclaration(body)) {
            QString text;
            return decodeText(body, m_encoding, text, m_qsError);
        }
        if (m_bFastReader && XmlFastReader::read(body, m_encoding, m_top))
            return true;
        if (!CXmlDefaultHandler::prepareReferences(body, m_qsError))
            return false;
        return parseBytes(body, m_encoding, m_top, m_qsError, &m_nDroppedMarkup);
    } catch (const std::bad_alloc&) {
        m_top.deleteAll();
        return fail(QStringLiteral("not enough memory for a document of %1 bytes").arg(size));
    }
}

CXmlTagV2* CSerialize::topNode(const QString& qsName, bool bCreate)
{
    CXmlTagV2* top = root();
    if (!top) {
        if (!bCreate)
            return nullptr;
        top = new CXmlTagV2(qsName);
        m_top.append(top);
        return top;
    }
    if (top->name() == qsName)
        return top;
    if (CXmlTagV2* child = top->getTagFromName(qsName))
        return child;
    return bCreate ? top->addTagNode(qsName) : nullptr;
}

void CSerialize::clearTag(CXmlTagV2* tag)
{
    if (!tag)
        return;
    tag->attributesRef().clear();
    tag->setValue(QString());
    CFxXmListlTag& children = tag->children();
    for (int i = 0; i < children.count(); ++i)
        children.getNumTag(i)->setDetached();
    children.moveAllTo(m_detached);
}

void CSerialize::removeTag(CXmlTagV2* tag)
{
    if (!isGoodTag(tag))
        return;
    CFxXmListlTag& list = tag->parent() ? tag->parent()->children() : m_top;
    list.takeAt(list.indexOf(tag));
    tag->setDetached();
    m_detached.append(tag);
}

bool CSerialize::isGoodTag(const CXmlTagV2* tag) const
{
    if (!tag)
        return false;
    while (tag->parent()) {
        if (tag->isDetached())
            return false;
        tag = tag->parent();
    }
    return m_top.indexOf(tag) >= 0;
}

QByteArray CSerialize::render() const
{
    QByteArray out;
    XmlWriter::render(m_top, m_encoding, out, nullptr);
    return out;
}

bool CSerialize::renderChecked(QByteArray& out)
{
    try {
        QString error;
        bool readBack = false;
        if (!XmlWriter::render(m_top, m_encoding, out, &error, &readBack)) {
            out.clear();
            return fail(QStringLiteral("not saved: %1").arg(error));
        }
        // The writer checks, while it escapes, that every name and text it
        // writes comes back through the reader's rules, and refuses what
        // would not; for the module's own encoding and UTF-8 that is the
        // whole story. Another codec may map characters in ways the writer
        // cannot know, and names beyond ASCII are classed by tables the
        // reader may not share, so those renderings are read back in full.
        if (!readBack && (!m_encoding.codec || m_encoding.isUtf8()))
            return true;
        XmlWriter::Encoding enc = m_encoding;
        QString text;
        QByteArray body = out;
        if (body.startsWith(kUtf8Bom))
            body.remove(0, 3);
        QString differs;
        if (!decodeText(body, enc, text, error))
            differs = error;
        else if (!onlyDeclaration(body) || !m_top.isEmpty())
            differs = TreeVerifier(m_top, m_encoding).verify(text);
        if (!differs.isEmpty()) {
            out.clear();
            return fail(
                QStringLiteral("not saved: the written document would not read back as it is (%1)").arg(differs));
        }
    } catch (const std::bad_alloc&) {
        out.clear();
        return fail(QStringLiteral("not saved: not enough memory to render the document"));
    }
    return true;
}

const QByteArray* CSerialize::renderToBuffer()
{
    if (!renderChecked(m_rendered))
        return nullptr;
    return &m_rendered;
}

bool CSerialize::save()
{
    if (m_qsFileName.isEmpty())
        return fail(QStringLiteral("the document has no file to be saved to"));
    QByteArray bytes;
    if (!renderChecked(bytes))
        return false;
    if (m_lock)
        return writeFile(bytes);
    // The lock of this save alone; its folder may not take one (read-only),
    // and then the save fails for that reason below.
    QLockFile lock(m_qsFileName + QStringLiteral(".lock"));
    lock.setStaleLockTime(30000);
    if (!lock.tryLock(10000) && lock.error() == QLockFile::LockFailedError)
        return fail(QStringLiteral("cannot save %1: another program is saving it; try again")
                        .arg(QDir::toNativeSeparators(m_qsFileName)));
    return writeFile(bytes);
}

bool CSerialize::writeFile(const QByteArray& bytes)
{
    const QString shown = QDir::toNativeSeparators(m_qsFileName);
    if (changedOnDisk())
        return fail(QStringLiteral("cannot save %1: the file changed since it was opened").arg(shown));
    const QFileInfo info(m_qsFileName);
    QSaveFile file(m_qsFileName);
    // Writing in place would leave a cut file behind a failed save.
    file.setDirectWriteFallback(false);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly)) {
        const int saved = errno;
        const QFileInfo folder(info.absolutePath());
        if (folder.exists() && !folder.isWritable())
            return fail(QStringLiteral("cannot save %1: the folder is read-only, so the file cannot be replaced safely")
                            .arg(shown));
        return fail(QStringLiteral("cannot save %1: %2").arg(shown, saved ? systemReason(saved) : file.errorString()));
    }
    errno = 0;
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 n = file.write(bytes.constData() + done, bytes.size() - done);
        if (n <= 0)
            break;
        done += n;
    }
    const bool written = done == bytes.size() && file.flush();
    const int writeErrno = errno;
    if (!written || !file.commit()) {
        const int saved = writeErrno ? writeErrno : errno;
        const QString reason = saved ? systemReason(saved) : file.errorString();
        file.cancelWriting();
        return fail(QStringLiteral("cannot save %1: %2").arg(shown, reason));
    }
    acceptDiskState();
    return true;
}

bool CSerialize::saveAs(const QString& qsFileName)
{
    const QString qsOld = m_qsFileName;
    const bool bKnown = m_bDiskKnown;
    m_qsFileName = qsFileName;
    // Another file is the user's choice: whatever is there is replaced.
    // The document's own file is checked as save() checks it.
    if (QFileInfo(qsFileName) != QFileInfo(qsOld))
        m_bDiskKnown = false;
    if (save())
        return true;
    m_qsFileName = qsOld;
    m_bDiskKnown = bKnown;
    return false;
}

bool zor_StartSZ(coreSzCreate* lpCreate)
{
    if (!lpCreate)
        return false;
    lpCreate->lpSerialize = nullptr;
    const size_t n = strnlen(lpCreate->szFileName, sizeof lpCreate->szFileName - 1);
    const QString name = QFile::decodeName(QByteArray(lpCreate->szFileName, int(n)));
    if (name.isEmpty())
        return false;
    CSerialize* doc = new CSerialize;
    if (!doc->openFile(name)) {
        delete doc;
        return false;
    }
    lpCreate->lpSerialize = doc;
    return true;
}

bool zor_StopSZ(CSerialize* lpSerialize, bool bSave)
{
    if (!lpSerialize)
        return false;
    const bool ok = !bSave || lpSerialize->save();
    delete lpSerialize;
    return ok;
}

bool zor_StartSZMemo(coreSzMemo* lpMemo)
{
    if (!lpMemo)
        return false;
    lpMemo->lpSerialize = nullptr;
    if (lpMemo->nSize < 0 || (lpMemo->nSize > 0 && !lpMemo->lpData))
        return false;
    CSerialize* doc = new CSerialize;
    if (!doc->openData(QByteArray::fromRawData(lpMemo->lpData, lpMemo->nSize))) {
        delete doc;
        return false;
    }
    lpMemo->lpSerialize = doc;
    return true;
}

bool zor_GetSZMemo(CSerialize* lpSerialize, coreSzMemo* lpMemo)
{
    if (!lpSerialize || !lpMemo)
        return false;
    const QByteArray* buffer = lpSerialize->renderToBuffer();
    if (!buffer)
        return false;
    lpMemo->lpData = buffer->constData();
    lpMemo->nSize = buffer->size();
    lpMemo->lpSerialize = lpSerialize;
    return true;
}

void zor_StopSZMemo(CSerialize* lpSerialize)
{
    delete lpSerialize;
}
