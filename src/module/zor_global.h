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
// Tests use it to keep their list files out of the build tree; the shipped
// and the user's data are then both read and written there.
void setAppDataDirectory(const QString& qsDirectory);

// Where the shipped, read-only data lies (Localization/Lang/zor_<lang>.lang,
// Localization/Temp/commands.xml and the other default lists):
// appDataDirectory() when the data lies beside the program, as in a build
// tree; otherwise <prefix>/share/zor-commands of an installed tree, found
// relative to the program or else to the library itself, so that a moved
// tree and a host installed elsewhere find it as well.
QString appSharedDataDirectory();
// Where the user's own files are written (user lists, command history):
// the folder of the shipped data when that is appDataDirectory() and
// writable (a build tree keeps its layout), otherwise the user's own data
// folder, $XDG_DATA_HOME/zor-commands (~/.local/share/zor-commands). Below
// it the files keep the sub-paths of the shipped ones.
QString appUserDataDirectory();
// File of the loaded libZOR_Commands ("" when it cannot be told).
QString moduleLibraryPath();

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
