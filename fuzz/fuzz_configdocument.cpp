// Arbitrary bytes as a settings file opened the way the configuration
// window's Open and `zor-tool config normalize` open one: every settings
// form reads it through ZOR_ConfigDocument, writes itself back and the
// document is rendered. A refusal needs a reason; what renders must open.

#include "config/zor_configdocument.h"
#include "store/cserialize.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

namespace {

ZOR_ConfigDocument* document;
QTemporaryDir* workDir;

} // namespace

// The font database (fontconfig) keeps its caches until the process ends;
// that is no leak of the forms'.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig.so\n";
}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QApplication(*argc, *argv);
    workDir = new QTemporaryDir();
    document = new ZOR_ConfigDocument();
    document->createForms();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path = workDir->filePath(QStringLiteral("cfg.xml"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 0;
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    file.close();
    if (!document->load(path)) {
        if (document->errorString().isEmpty())
            __builtin_trap(); // refused without a reason
        return 0;
    }
    const QByteArray rendered = document->render();
    if (rendered.isEmpty()) {
        if (document->errorString().isEmpty())
            __builtin_trap();
        return 0;
    }
    CSerialize again;
    if (!again.openData(rendered))
        __builtin_trap(); // the forms wrote what cannot be read
    return 0;
}
