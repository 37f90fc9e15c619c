#ifndef ZOR_FORM_DOCUMENT_H
#define ZOR_FORM_DOCUMENT_H

// Test helpers: one form read from and written to a settings document in
// memory, below the top element "CONFIG" as the configuration window does.

#include <QByteArray>

class ZOR_Form_Config;

namespace ZorFormDocument {

extern const QByteArray kDecl;
// The declaration line and <CONFIG> around the given element lines.
QByteArray config(const QByteArray& body);
// False when the bytes do not parse.
bool load(ZOR_Form_Config& form, const QByteArray& bytes);
QByteArray save(ZOR_Form_Config& form);

}

#endif
