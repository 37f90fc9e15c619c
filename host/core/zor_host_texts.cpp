#include "zor_host_texts.h"

#include <QCoreApplication>
#include <QVariant>

#include <cstring>

namespace {

struct HostText
{
    const char* lpKey;
    const char* lpRu; // UTF-8
    const char* lpEn;
};

const HostText kTexts[] = {
    {"menu_terminal", "Терминал", "Terminal"},
    {"menu_modules", "Модули", "Modules"},
    {"menu_settings", "Настройки", "Settings"},
    {"menu_language", "Язык", "Language"},
    {"act_simulator", "Симулятор терминала", "Terminal simulator"},
    {"act_serial", "Последовательный порт…", "Serial port…"},
    {"act_reconnect", "Переподключить", "Reconnect"},
    {"act_disconnect", "Отключить", "Disconnect"},
    {"act_quit", "Выход", "Quit"},
    {"act_config", "Конфигурация терминала…", "Terminal configuration…"},
    {"act_dialect", "Диалект команд GNSS…", "GNSS command dialect…"},
    {"act_ussd", "Запрос баланса USSD…", "Balance USSD request…"},
    {"dialect_unknown", "неизвестный", "unknown"},
    {"simulator", "симулятор терминала", "terminal simulator"},
    {"port_title", "Последовательный порт", "Serial port"},
    {"port_port", "Порт:", "Port:"},
    {"port_baud", "Скорость (бод):", "Baud rate:"},
    {"status_unknown_link", "Неизвестная связь с терминалом: %1", "Unknown terminal link: %1"},
    {"status_cannot_open", "Не удаётся открыть %1: %2", "Cannot open %1: %2"},
    {"hint_dialout",
        "в Debian последовательные порты доступны группе dialout: sudo adduser $USER dialout, затем войдите "
        "в систему заново",
        "on Debian serial ports are for the group dialout: sudo adduser $USER dialout, then log in again"},
    {"status_connected", "Подключено: %1", "Connected: %1"},
    {"status_disconnected", "Отключено", "Disconnected"},
    {"status_lost", "Связь с %1 потеряна: %2. Повторное подключение, как только порт появится…",
        "The link to %1 is lost: %2. It reconnects as soon as the port is back…"},
    {"status_no_last", "Нет связи, к которой можно переподключиться", "There is no link to reconnect to"},
};

} // namespace

QString zorHostText(const char* lpKey)
{
    const QCoreApplication* app = QCoreApplication::instance();
    return zorHostText(lpKey, app && app->property("zor_programLanguage").toString() == QLatin1String("en"));
}

QString zorHostText(const char* lpKey, bool bEnglish)
{
    for (const HostText& text : kTexts) {
        if (std::strcmp(text.lpKey, lpKey) == 0)
            return QString::fromUtf8(bEnglish ? text.lpEn : text.lpRu);
    }
    return QString::fromLatin1(lpKey);
}
