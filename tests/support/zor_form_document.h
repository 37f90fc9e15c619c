#ifndef ZOR_FORM_DOCUMENT_H
#define ZOR_FORM_DOCUMENT_H

// Test helpers: one form read from and written to a settings document in
// memory, below the top element "CONFIG" as the configuration window does;
// or a whole configuration document of some pages loaded from a file.

#include "config/zor_configdocument.h"
#include "config/zor_terminalprofile.h"

#include <QByteArray>
#include <QTemporaryDir>

class ZOR_Form_Config;

namespace ZorFormDocument {

extern const QByteArray kDecl;
// The declaration line and <CONFIG> around the given element lines.
QByteArray config(const QByteArray& body);
// False when the bytes do not parse.
bool load(ZOR_Form_Config& form, const QByteArray& bytes);
QByteArray save(ZOR_Form_Config& form);

QByteArray readFile(const QString& path);
bool writeFile(const QString& path, const QByteArray& bytes);
// The trimmed line of element name in a rendered document ("" when absent).
QByteArray nodeLine(const QByteArray& rendered, const QByteArray& name);

// A configuration document of the given pages (no pages: every page),
// saved in and loaded from a file of its own.
struct Doc
{
    explicit Doc(const QVector<ZOR_ConfigPage>& pages, const ZOR_TerminalProfile& profile = ZOR_TerminalProfile());
    // Writes the bytes to the file and loads it; a failure is logged with its reason.
    bool load(const QByteArray& bytes);
    QString path() const { return dir.filePath(QStringLiteral("c.xml")); }
    QByteArray file() const { return readFile(path()); }
    QByteArray line(const QByteArray& name) { return nodeLine(doc.render(), name); }
    template <typename T>
    T* form(const char* id) const
    {
        return static_cast<T*>(doc.form(QLatin1String(id)));
    }

    QTemporaryDir dir;
    ZOR_ConfigDocument doc;
};

} // namespace ZorFormDocument

#endif
