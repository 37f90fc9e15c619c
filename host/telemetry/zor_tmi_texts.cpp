#include "zor_tmi_texts.h"

#include <QCoreApplication>
#include <QVariant>

#include <cstring>

namespace {

struct Text
{
    const char* key;
    const char* ru;
    const char* en;
};

const Text kTexts[] = {
    {"window_title", "Телеметрия", "Telemetry"},
    {"menu", "Телеметрия...", "Telemetry..."},
    {"open", "Открыть архив...", "Open archive..."},
    {"open_filter", "Архивы телеметрии (*.bin *.dat *.tmi);;Все файлы (*)", "Telemetry archives (*.bin *.dat *.tmi);;All files (*)"},
    {"version", "Версия протокола:", "Protocol version:"},
    {"fieldset", "Набор полей:", "Field set:"},
    {"fieldset_tip", "255 знаков «1»/«0» (знак i — поле i+1) или 32 байта маски, 64 шестнадцатеричные цифры",
     "255 characters \"1\"/\"0\" (character i is field i+1) or the 32 mask bytes as 64 hex digits"},
    {"fields", "Поля...", "Fields..."},
    {"fields_title", "Поля записи", "Record fields"},
    {"from_file", "Из файла настроек...", "From settings file..."},
    {"from_file_filter", "Файлы настроек (*.xml);;Все файлы (*)", "Settings files (*.xml);;All files (*)"},
    {"from_config", "Из открытой конфигурации", "From the open configuration"},
    {"no_config", "Окно конфигурации не открыто", "No configuration window is open"},
    {"export", "Экспорт CSV", "Export CSV"},
    {"export_all", "Весь архив...", "Whole archive..."},
    {"export_selected", "Выбранные записи...", "Selected records..."},
    {"export_filter", "Таблицы CSV (*.csv)", "CSV tables (*.csv)"},
    {"export_running", "Экспорт в %1...", "Exporting to %1..."},
    {"export_done", "Экспортировано записей: %1 в %2", "%1 records exported to %2"},
    {"export_cancelled", "Экспорт отменён, файл не создан", "Export cancelled, no file written"},
    {"export_failed", "Экспорт не удался: %1", "Export failed: %1"},
    {"export_nothing", "Нет записей для экспорта", "No records to export"},
    {"cancel", "Отмена", "Cancel"},
    {"no_file", "Архив не открыт", "No archive open"},
    {"info", "%1: %2 байт, записей: %3 по %4 байт", "%1: %2 bytes, %3 records of %4 bytes"},
    {"empty_file", "файл пуст", "the file is empty"},
    {"no_fields", "набор полей не выбирает ни одного поля", "the field set selects no fields"},
    {"shorter", "файл (%1 байт) короче одной записи (%2 байт)", "the file (%1 bytes) is shorter than one record (%2 bytes)"},
    {"partial", "неполная запись в конце: смещение %1, %2 из %3 байт, не хватает %4 байт — набор полей не делит файл",
     "trailing partial record at offset %1: %2 of %3 bytes, %4 bytes missing - the field set does not divide the file"},
    {"too_many", "показаны первые %1 записей", "only the first %1 records are shown"},
    {"cannot_open", "Не удалось открыть %1: %2", "Cannot open %1: %2"},
    {"read_error", "ошибка чтения", "read error"},
    {"partial_row", "неполная", "partial"},
    {"partial_tip", "Смещение %1: %2 байт, не хватает %3", "Offset %1: %2 bytes, %3 missing"},
    {"row_tip", "Запись %1, смещение %2", "Record %1, offset %2"},
    {"record", "Запись %1 — смещение %2, %3 байт", "Record %1 - offset %2, %3 bytes"},
    {"record_none", "Запись не выбрана", "No record selected"},
    {"col_number", "№", "No."},
    {"col_name", "Поле", "Field"},
    {"col_width", "Размер", "Width"},
    {"col_offset", "Смещение", "Offset"},
    {"col_raw", "Байты", "Bytes"},
    {"col_text", "Значение", "Value"},
    {"fs_empty", "набор полей пуст", "the field set is empty"},
    {"fs_too_long", "маска длиннее 255 знаков (%1)", "the mask is longer than 255 characters (%1)"},
    {"fs_bad_text", "нужны знаки «0»/«1» или 64 шестнадцатеричные цифры",
     "expected \"0\"/\"1\" characters or 64 hex digits"},
    {"fs_no_protocol", "в файле нет элемента PROTOCOL/KITE с маской", "the file has no PROTOCOL/KITE element with a mask"},
    {"chart_search", "Поиск столбца по подписи или имени поля", "Find a column by caption or field name"},
    {"chart_reset", "Весь архив", "Whole archive"},
    {"chart_reset_tip", "Показать весь архив", "Show the whole archive"},
    {"chart_clear", "Убрать все", "Clear all"},
    {"chart_tip", "Колесо — масштаб, перетаскивание — сдвиг, щелчок — курсор на запись; полоса внизу — весь архив",
     "Wheel zooms, drag pans, a click puts the cursor on a record; the strip below is the whole archive"},
    {"chart_failed", "Не удалось прочитать значения: %1", "Cannot read the values: %1"},
    {"tab_track", "Трек", "Track"},
    {"tab_summary", "Сводка поездки", "Drive summary"},
    {"track_none", "Нет записей с достоверными координатами", "No records with a valid fix"},
    {"track_no_coords", "в наборе полей нет широты и долготы", "the field set has no latitude and longitude"},
    {"track_no_fix", "ни одной записи с достоверными координатами", "no record has a valid fix"},
    {"track_tip", "Колесо — масштаб, перетаскивание — сдвиг, щелчок — ближайшая запись",
     "Wheel zooms, drag pans, a click selects the nearest record"},
    {"track_start_mark", "Н", "S"},
    {"track_end_mark", "К", "E"},
    {"track_stop_mark", "С", "P"},
    {"unit_km", "км", "km"},
    {"unit_m", "м", "m"},
    {"unit_kmh", "км/ч", "km/h"},
    {"map", "Карта...", "Map..."},
    {"map_tip", "Сервер тайлов карты", "Map tile server"},
    {"map_title", "Сервер тайлов карты", "Map tile server"},
    {"map_explain", "Шаблон адреса тайлов XYZ с {z}, {x} и {y}. Пустой шаблон выключает карту: трек рисуется на сетке координат. Соблюдайте условия сервера.",
     "An XYZ tile URL template with {z}, {x} and {y}. An empty template turns the map off: the track is drawn on a graticule. Keep to the server's terms of use."},
    {"map_url", "Шаблон адреса:", "URL template:"},
    {"map_attribution", "Подпись источника:", "Attribution:"},
    {"map_bad_url", "Нужен адрес http или https с {z}, {x} и {y}", "An http or https URL with {z}, {x} and {y} is needed"},
    {"map_off", "карта выключена (Карта...)", "map off (Map...)"},
    {"tile_error", "тайлы с %1 недоступны: %2", "tiles from %1 unavailable: %2"},
    {"tile_not_image", "%1 прислал не изображение (%2, %3 байт)", "%1 answered with something other than an image (%2, %3 bytes)"},
    {"goto", "Перейти к:", "Go to:"},
    {"goto_button", "Перейти", "Go"},
    {"goto_no_time", "В записях нет времени", "The records carry no time"},
    {"goto_none", "Нет записей начиная с %1", "No records from %1 on"},
    {"filter_code", "Код события:", "Event code:"},
    {"filter_code_hint", "2, 5-7", "2, 5-7"},
    {"filter_condition", "Условие:", "Condition:"},
    {"condition_none", "(нет)", "(none)"},
    {"filter_apply", "Отобрать", "Filter"},
    {"filter_clear", "Все записи", "All records"},
    {"filter_done", "Показано записей: %1 из %2", "%1 of %2 records shown"},
    {"filter_bad_codes", "Неверный список кодов: %1", "Bad code list: %1"},
    {"filter_bad_condition", "Неверное условие", "Bad condition"},
    {"filter_bad_value", "Неверное число: %1", "Not a number: %1"},
    {"filter_no_codes", "В наборе полей нет кода события", "The field set has no event code"},
    {"columns", "Столбцы", "Columns"},
    {"columns_all", "Все столбцы", "All columns"},
    {"columns_nonzero", "Скрыть нулевые во всём архиве", "Hide columns that are zero throughout"},
    {"columns_chart", "Только время и столбцы графика", "Only the time and the charted columns"},
    {"columns_choose", "Выбрать...", "Choose..."},
    {"columns_title", "Столбцы таблицы", "Table columns"},
    {"fs_bad", "Неверный набор полей: %1", "Bad field set: %1"},
};

} // namespace

QString zorTmiText(const char* lpKey)
{
    const QCoreApplication* app = QCoreApplication::instance();
    const bool bEnglish = app && app->property("zor_programLanguage").toString() == QLatin1String("en");
    for (const Text& t : kTexts)
        if (std::strcmp(t.key, lpKey) == 0)
            return QString::fromUtf8(bEnglish ? t.en : t.ru);
    return QString::fromLatin1(lpKey);
}
