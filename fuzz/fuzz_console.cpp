// Arbitrary bytes as what a terminal answers: received by the console (log
// row, ICCID recognition), then every text the log makes of the row: the
// shortened cells, the tooltip, the details with the hex dump, the copy and
// the exports. The cells must stay whole whatever the bytes.

#include "commands/zor_form_commands.h"
#include "commands/zor_model_log.h"

#include <QApplication>
#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

ZOR_Form_Commands* console()
{
    static ZOR_Form_Commands* form = [] {
        static int argc = 1;
        static char name[] = "fuzz_console";
        static char* argv[] = {name, nullptr};
        qputenv("QT_QPA_PLATFORM", "offscreen");
        new QApplication(argc, argv);
        return new ZOR_Form_Commands();
    }();
    return form;
}

} // namespace

// The font database (fontconfig) keeps its caches until the process ends;
// that is no leak of the console's.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig.so\n";
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    ZOR_Form_Commands* form = console();
    ZOR_Model_Log* log = form->logModel();
    log->clear();
    QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    form->deviceReceive(&bytes);
    form->setData(0, bytes);
    for (int row = 0; row < log->rowCount(); ++row) {
        for (int column = 0; column < ZOR_Model_Log::ColumnCount; ++column) {
            const QModelIndex index = log->index(row, column);
            index.data(Qt::DisplayRole);
            index.data(Qt::ToolTipRole);
        }
        if (log->text(row, ZOR_Model_Log::ColumnData).size() != bytes.size()
            || log->text(row, ZOR_Model_Log::ColumnHex).size() != 2 * bytes.size())
            std::abort();
        log->detailText(row);
    }
    log->rowsAsTsv({0, 1});
    log->rowsAsHex({0, 1});
    log->exportLog(ZOR_Model_Log::Format::Csv);
    log->exportLog(ZOR_Model_Log::Format::Text);
    if (size > 0)
        log->setFilter(data[0] % 3 - 1, QString::fromLatin1(bytes.left(2).toHex()));
    log->setFilter(-1, QString());
    return 0;
}
