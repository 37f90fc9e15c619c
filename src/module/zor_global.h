#ifndef ZOR_GLOBAL_H
#define ZOR_GLOBAL_H

// Helpers shared by every part of the module.

#include <QString>
#include <Qt>

// Directory of the running application; data files (language files,
// command lists) lie below it. Without a QCoreApplication it is the
// directory of the target of /proc/self/exe.
QString appDataDirectory();
// Points appDataDirectory() at another directory ("" restores the default).
// Tests use it to keep their list files out of the build tree.
void setAppDataDirectory(const QString& qsDirectory);

// Current language, kept as the application property "zor_programLanguage".
// Empty without an application object.
QString programLanguage();
void setProgramLanguage(const QString& qsLanguage);

// s + suffix unless s already ends with suffix (case-sensitive); "" stays "".
QString ensureSuffix(const QString& s, const QString& suffix);

// Window flags of configuration dialogs: window, maximise and close buttons.
Qt::WindowFlags configDialogFlags();

// Two-letter type prefixes of wireless sensors.
extern const QString glqsBtPreffix_FS;
extern const QString glqsBtPreffix_HD;
extern const QString glqsBtPreffix_IS;
extern const QString glqsBtPreffix_LS;
extern const QString glqsBtPreffix_PR;
extern const QString glqsBtPreffix_SL;
extern const QString glqsBtPreffix_ST;
extern const QString glqsBtPreffix_UB;
extern const QString glqsBtPreffix_WT;
extern const QString glqsBtPreffix_AS;
extern const QString glqsBtPreffix_UP;
extern const QString glqsBtPreffix_CN;
extern const QString glqsBtPreffix_IN;
extern const QString glqsBtPreffix_AG;
extern const QString glqsBtPreffix_HS;
extern const QString glqsBtPreffix_WS;
extern const QString glqsBtPreffix_WP;
// CAN selections.
extern const QString glqsCanPreffix_SC;
extern const QString glqsCanPreffix_AC;
extern const QString glqsCanPreffix_BC;
// Other sources of user parameters: passenger counter (CO), refrigeration
// unit (RC, and AX for the unit's auxiliary controller), and values an
// external controller reports under numbers of its own (CE).
extern const QString glqsPcntPreffix_CO;
extern const QString glqsRefrPreffix_RC;
extern const QString glqsCEPreffix_CE;
extern const QString glqsRefrPreffix_AX;

#endif
