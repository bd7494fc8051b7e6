#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tavrin {
namespace {

/// The texts whose signs, line breaks or wording are easily lost.
constexpr StaticMessage kExpected[] = {
    // clang-format off
    {"consentBulletYouDecide",
     "You decide what gets removed. The app finds files and suggests them; the final selection — and reviewing it — is your responsibility.",
     "Tú decides qué se elimina. La app encuentra y propone; la selección final y su revisión son tu responsabilidad."},
    {"consentBulletReversible",
     "Anything you clean is moved to the Trash and logged in History, so you can put it back. Once you empty the Trash, it's gone for good.",
     "Lo que se limpia se mueve a la Papelera y queda en el Historial, para que puedas restaurarlo. Si vacías la Papelera, el borrado es permanente."},
    {"consentTermsBody",
     "Tavrin Clean is provided \"AS IS\", without warranties of any kind, express or implied, including those of merchantability or fitness for a particular purpose. You use the app entirely at your own risk.\n\nThe app identifies files that can be removed and, by default, moves them to the system Trash (a reversible action). You review and confirm what gets removed. We are not liable for data loss, lost profits, or any direct, indirect, or incidental damages arising from your use of the app, to the fullest extent permitted by applicable law.\n\nWe recommend keeping your backups up to date. The app does not collect the contents of your files; see the privacy policy for details.",
     "Tavrin Clean se proporciona \"TAL CUAL\" (\"as is\"), sin garantías de ningún tipo, expresas o implícitas, incluidas las de comerciabilidad o idoneidad para un fin concreto. El uso de la aplicación es bajo tu exclusiva responsabilidad.\n\nLa aplicación identifica archivos que pueden eliminarse y, por defecto, los mueve a la Papelera del sistema (acción reversible). Eres tú quien revisa y confirma qué se elimina. No nos hacemos responsables de la pérdida de datos, lucro cesante ni de daños directos, indirectos o incidentales derivados del uso de la aplicación, en la máxima medida permitida por la ley aplicable.\n\nRecomendamos mantener copias de seguridad actualizadas. La aplicación no recopila el contenido de tus archivos; consulta la política de privacidad para más detalle."},
    {"dashTagline",
     "Your digital guardian · protects, cleans, and speeds up your Mac.",
     "Tu guardián digital · protege, limpia y optimiza tu Mac."},
    {"dashCtaSubtitle",
     "One click and we safely free up what you no longer need. Perfect if you'd rather not dig into the details.",
     "Un clic y liberamos lo que sobra de forma segura. Ideal si no quieres complicarte."},
    {"dashCtaButton", "Scan", "Analizar"},
    {"dashToolsNote", "Everything goes to the Trash · reversible", "Todo va a la Papelera · reversible"},
    {"dashDiskMapSubtitle", "See what's taking up space", "Ver qué ocupa espacio"},
    {"menuBarQuit", "Quit", "Salir"},
    {"updatesCheck", "Check for Updates…", "Buscar actualizaciones…"},
    {"smartSubtitle",
     "Finds and safely removes what you don't need —\nno decisions required.",
     "Encuentra y elimina lo que sobra de forma segura,\nsin que tengas que decidir nada."},
    {"smartPreparing", "Preparing…", "Preparando…"},
    {"smartCleaning", "Cleaning up…", "Limpiando…"},
    {"smartOptimizing", "Optimizing…", "Optimizando…"},
    {"smartStop", "Stop", "Detener"},
    {"smartScanAgain", "Scan again", "Analizar de nuevo"},
    {"smartRescan", "Scan again", "Volver a analizar"},
    {"smartConfirmTitle", "Continue?", "¿Continuar?"},
    {"smartConfirmAction", "Continue", "Continuar"},
    {"smartAdminPromptNote",
     "macOS is about to ask for your administrator password for this part. The prompt will come from “osascript”, the macOS tool used to run it. You can cancel it: the cleanup is already done.",
     "macOS va a pedirte tu contraseña de administrador para esta parte. El diálogo aparecerá a nombre de «osascript», que es la herramienta del propio macOS con la que se ejecuta. Puedes cancelarlo: la limpieza ya está hecha."},
    {"smartDoneTitle", "All done!", "¡Listo!"},
    {"smartNothingToClean", "No caches to clean up. ✨", "Nada que limpiar en cachés. ✨"},
    {"smartSafetyShow", "Is this safe? Yes — click to see why", "¿Es seguro? Sí — toca para ver por qué"},
    {"smartSafetyNoAdminTitle", "Your files aren't touched", "Tus archivos no se tocan"},
    {"smartSafetyNoAdminText",
     "It doesn't touch your documents, photos, or the system. Only the optional optimizations ask for your administrator password.",
     "No toca documentos, fotos ni el sistema. Solo las optimizaciones opcionales piden tu contraseña de administrador."},
    {"actionContinue", "Continue", "Continuar"},
    {"actionScanAgain", "Scan again", "Volver a escanear"},
    {"actionSelectNone", "Select none", "Ninguno"},
    {"actionStop", "Stop", "Detener"},
    {"searchPlaceholder", "Search…", "Buscar…"},
    {"fdaTitle", "Tavrin Clean needs “Full Disk Access”", "Necesito “Acceso total al disco”"},
    {"fdaSteps",
     "System Settings → Privacy & Security → Full Disk Access → turn on Tavrin Clean",
     "Ajustes → Privacidad y seguridad → Acceso total al disco → activa Tavrin Clean"},
    {"fdaTrashBody",
     "macOS protects the Trash for privacy. Grant Tavrin Clean permission and try again. (Without permission, the Trash looks empty even when it isn't.)",
     "macOS protege la Papelera por privacidad. Concédele el permiso a Tavrin Clean y vuelve a intentarlo. (Si dice “vacía” sin permiso, en realidad no puede leerla.)"},
    {"moduleAppLanguagesSubtitle", "Languages you don't use", "Idiomas que no usas"},
    {"moduleDeveloperJunkSubtitle", "Build caches, node_modules…", "Cachés de build, node_modules…"},
    {"moduleBrowserCachesSubtitle", "Caches from Safari, Chrome, Firefox…", "Cachés de Safari, Chrome, Firefox…"},
    {"moduleConfirmTitle", "Move to the Trash?", "¿Enviar a la Papelera?"},
    {"moduleConfirmMailWarning",
     "\n\n\u26A0\uFE0E Keep a backup (Time Machine) handy, and don't empty the Trash until you've confirmed you don't need any attachment that exists only on this Mac.",
     "\n\n\u26A0\uFE0E Ten una copia de seguridad (Time Machine) y no vacíes la Papelera hasta confirmar que no necesitas ningún adjunto que sea solo local."},
    {"moduleNoteYourFiles",
     "These are your own files. Nothing is pre-selected: you choose what to remove. Everything goes to the Trash, so it's reversible.",
     "Son archivos tuyos. No se preselecciona nada: elige tú qué quitar. Todo va a la Papelera y es reversible."},
    {"moduleNoteAppLanguages",
     "Language files are marked as optional inside the app's code signature, so removing them breaks nothing: the app stays signed by its maker and keeps launching normally.",
     "Los archivos de idioma van marcados como opcionales dentro de la firma de la app, así que quitarlos no rompe nada: la app sigue firmada por su fabricante y sigue abriendo con normalidad."},
    {"moduleNoteUninstaller",
     "Uninstalling also removes the files the app left in your user folder. Shared vendor folders (Google, Adobe, Microsoft…) are left alone: other apps you still use may depend on them.",
     "Al desinstalar también se quitan los archivos que la app dejó en tu carpeta de usuario. Las carpetas compartidas de un fabricante (Google, Adobe, Microsoft…) no se tocan: otras apps que sigues usando pueden depender de ellas."},
    {"moduleNothingToClean", "Nothing to clean up. All good!", "Nada que limpiar. ¡Todo en orden!"},
    {"moduleSimilarHint",
     "Each group is a set of similar photos. The one marked “Keep” stays; check any others you want to remove.",
     "Cada grupo son fotos parecidas. La marcada como “Conservar” se queda; marca las demás que quieras eliminar."},
    {"moduleSortSizeDesc", "Size (largest first)", "Tamaño (mayor primero)"},
    {"moduleSortSizeAsc", "Size (smallest first)", "Tamaño (menor primero)"},
    {"moduleSortDateNewest", "Date (newest first)", "Fecha (más reciente primero)"},
    {"moduleSortDateOldest", "Date (oldest first)", "Fecha (más antigua primero)"},
    {"moduleSortName", "Name (A–Z)", "Nombre (A–Z)"},
    {"moduleMailLocalCopy", "Local copy — check first", "Copia local — revisa"},
    {"moduleRunningAppHelp",
     "This app is open, so it's been unchecked for safety. Quit it before clearing its caches, or select it anyway at your own risk.",
     "Esta app está abierta, así que la deseleccioné por seguridad. Ciérrala antes de limpiar su caché, o márcala manualmente bajo tu responsabilidad."},
    {"moduleReadingContents", "Reading contents…", "Leyendo contenido…"},
    {"moduleStarting", "Starting…", "Iniciando…"},
    {"moduleMASProtected", "Mac App Store app — left untouched", "App del Mac App Store — no se modifica"},
    {"categoryLogs", "Logs", "Logs"},
    {"trashScanning", "Checking the Trash…", "Revisando la Papelera…"},
    {"trashEmptying", "Emptying…", "Vaciando…"},
    {"trashAlreadyEmpty", "The Trash is already empty. ✨", "La Papelera ya está vacía. ✨"},
    {"trashPermanentBadge", "Permanent · can't be undone", "Permanente · no se puede deshacer"},
    {"trashConfirm1Title", "Empty the Trash?", "¿Vaciar la Papelera?"},
    {"trashConfirm2Message",
     "Are you sure? These files will be gone for good. Make sure you don't need anything in the Trash.",
     "¿Seguro? Los archivos se borrarán para siempre. Asegúrate de no necesitar nada de la Papelera."},
    {"diskMapExplainer",
     "Scan your home folder to see what's taking up the most space, laid out as a treemap.",
     "Analiza tu carpeta de inicio para ver, en un treemap, qué ocupa más espacio."},
    {"diskMapAnalyze", "Scan", "Analizar"},
    {"diskMapReanalyze", "Scan again", "Volver a analizar"},
    {"historyClearConfirmTitle", "Clear the history?", "¿Vaciar el registro?"},
    {"historyEmptyTitle", "You haven't cleaned anything yet.", "Aún no has limpiado nada."},
    {"historyEmptySubtitle", "Once you do, you'll be able to put things back here.", "Cuando limpies, aquí podrás deshacerlo."},
    {"scanRemoving", "Removing…", "Eliminando…"},
    {"scanProtectedPath", "Protected system path — skipped for safety", "Ruta protegida del sistema — omitida por seguridad"},
    {"scanSystemAppProtected",
     "System or Apple app protected by macOS — it can't be uninstalled",
     "App del sistema o de Apple protegida por macOS — no se puede desinstalar"},
    {"scanCheckingLanguages", "Checking languages…", "Revisando idiomas…"},
    {"scanCheckingApps", "Checking apps…", "Revisando aplicaciones…"},
    {"scanScanningApps", "Scanning apps…", "Analizando aplicaciones…"},
    {"scanCheckingDownloads", "Checking Downloads…", "Revisando Descargas…"},
    {"scanCheckingScreenshots", "Checking screenshots…", "Revisando capturas…"},
    {"scanIndexingFiles", "Indexing files…", "Indexando archivos…"},
    {"scanComparingContents", "Comparing contents…", "Comparando contenido…"},
    {"scanAnalyzingDisk", "Scanning disk…", "Analizando disco…"},
    {"scanAnalyzingImages", "Analyzing images…", "Analizando imágenes…"},
    {"scanMeasuringBackup", "Measuring backup…", "Midiendo copia…"},
    {"scanLookingForProjects", "Looking for projects…", "Buscando proyectos…"},
    {"scanMessagesAttachments", "Looking for Messages attachments…", "Buscando adjuntos de Mensajes…"},
    {"detailBestCopyKept", "Best copy (kept)", "Mejor copia (se conserva)"},
    {"detailInTheTrash", "In the Trash", "En la papelera"},
    {"detailBrokenStartupItem",
     "\u26A0\uFE0E Broken · points to a file that no longer exists",
     "\u26A0\uFE0E Roto · apunta a un archivo que ya no existe"},
    {"perfCancelled", "Canceled", "Cancelado"},
    {"perfFailedGeneric", "Couldn't complete.", "No se pudo completar."},
    {"perfAdminNote",
     "Most of these tasks ask for your administrator password. They're standard macOS maintenance operations.",
     "La mayoría de estas tareas piden tu contraseña de administrador. Son acciones estándar de mantenimiento de macOS."},
    {"perfSpotlightSubtitle",
     "Rebuilds the search index when it's failing or slow.",
     "Reconstruye el índice de búsqueda si falla o va lento."},
    {"perfPermissionsTitle", "Repair your home folder's permissions", "Reparar permisos de tu carpeta"},
    {"perfLaunchServicesSubtitle",
     "Fixes duplicate and incorrect entries in the “Open With” menu.",
     "Arregla duplicados y errores en el menú 'Abrir con'."},
    {"perfSnapshotsSubtitle",
     "Frees up the “purgeable” space held by local snapshots. Your backup on the external disk is left untouched.",
     "Libera el espacio 'purgable' de las copias LOCALES. Tu backup en disco externo no se toca."},
    {"reminderNoCleanupYet", "You haven't run a cleanup yet.", "Aún no has hecho una limpieza."},
    {"reminderNotifyBody",
     "Run Tavrin's Smart Scan to safely free up space.",
     "Pasa el Análisis inteligente de Tavrin para liberar espacio de forma segura."},
    {"memoryQuitApp", "Quit", "Salir"},
    // clang-format on
};

std::map<std::string_view, StaticMessage> messagesByKey() {
    std::map<std::string_view, StaticMessage> byKey;
    for (const StaticMessage& message : S::staticMessages())
        byKey.emplace(message.key, message);
    return byKey;
}

TEST(StaticMessages, textsAreExactToTheCharacter) {
    const auto byKey = messagesByKey();
    for (const StaticMessage& expected : kExpected) {
        ASSERT_TRUE(byKey.contains(expected.key)) << expected.key;
        EXPECT_EQ(byKey.at(expected.key).english, expected.english) << expected.key;
        EXPECT_EQ(byKey.at(expected.key).spanish, expected.spanish) << expected.key;
    }
}

TEST(StaticMessages, theTableHas251KeysEachOnce) {
    std::set<std::string_view> keys;
    for (const StaticMessage& message : S::staticMessages())
        EXPECT_TRUE(keys.insert(message.key).second) << message.key;
    EXPECT_EQ(keys.size(), 251U);
}

TEST(StaticMessages, noTextIsEmpty) {
    for (const StaticMessage& message : S::staticMessages()) {
        EXPECT_FALSE(message.english.empty()) << message.key;
        EXPECT_FALSE(message.spanish.empty()) << message.key;
    }
}

TEST(StaticMessages, ellipsesArrowsAndWarningSignsAreTheRealOnes) {
    for (const StaticMessage& message : S::staticMessages()) {
        for (const std::string_view text : {message.english, message.spanish}) {
            EXPECT_EQ(text.find("..."), std::string_view::npos) << message.key;
            EXPECT_EQ(text.find("->"), std::string_view::npos) << message.key;
            const std::size_t warning = text.find("\u26A0");
            if (warning == std::string_view::npos) continue;
            EXPECT_TRUE(text.substr(warning).starts_with("\u26A0\uFE0E ")) << message.key;
        }
    }
}

TEST(StaticMessages, aScreenReadsLikeTheEntryThatLeadsToIt) {
    const std::vector<std::pair<std::string_view, std::string_view>> alike{
        {"smartTitle", "navSmartScan"},  {"dashCtaTitle", "navSmartScan"},
        {"trashTitle", "navEmptyTrash"}, {"trashSubtitle", "dashEmptyTrashSubtitle"},
        {"diskMapTitle", "navDiskMap"},  {"perfTitle", "navPerformance"},
    };
    const auto byKey = messagesByKey();
    for (const auto& [screen, entry] : alike) {
        EXPECT_EQ(byKey.at(screen).english, byKey.at(entry).english) << screen;
        EXPECT_EQ(byKey.at(screen).spanish, byKey.at(entry).spanish) << screen;
    }
}

TEST(StaticMessages, theProductsNameIsTheSameInEveryLanguage) {
    EXPECT_EQ(S::appName, "Tavrin Clean");
}

TEST(SystemTexts, noTextIsEmptyAndNoKeyStandsTwiceOrInTheMessages) {
    const auto messages = messagesByKey();
    std::set<std::string_view> keys;
    for (const StaticMessage& text : S::systemTexts()) {
        EXPECT_TRUE(keys.insert(text.key).second) << text.key;
        EXPECT_FALSE(messages.contains(text.key)) << text.key;
        EXPECT_FALSE(text.english.empty()) << text.key;
        EXPECT_FALSE(text.spanish.empty()) << text.key;
    }
    EXPECT_TRUE(keys.contains("EACCES"));
    EXPECT_TRUE(keys.contains("byteCountZero"));
}

TEST(WindowTexts, noTextIsEmptyAndNoKeyStandsTwiceOrInTheMessages) {
    const auto messages = messagesByKey();
    std::set<std::string_view> keys;
    for (const StaticMessage& text : S::windowTexts()) {
        EXPECT_TRUE(keys.insert(text.key).second) << text.key;
        EXPECT_FALSE(messages.contains(text.key)) << text.key;
        EXPECT_FALSE(text.english.empty()) << text.key;
        EXPECT_FALSE(text.spanish.empty()) << text.key;
        EXPECT_NE(text.english, text.spanish) << text.key;
    }
    EXPECT_TRUE(keys.contains("windowNotBuiltYet"));
}

TEST(WindowTexts, whereThereIsNoDisplayBothWaysWithoutOneAreNamed) {
    for (const StaticMessage& text : S::windowTexts()) {
        if (text.key != "windowNoDisplay") continue;
        for (const std::string_view sentence : {text.english, text.spanish}) {
            EXPECT_NE(sentence.find("--tour"), std::string_view::npos);
            EXPECT_NE(sentence.find("--vnc"), std::string_view::npos);
        }
    }
}

TEST(Language, isSpanishWhenTheFirstTagBeginsWithEsInEitherCase) {
    const std::vector<std::pair<std::vector<std::string>, Language>> cases{
        {{"es"}, Language::spanish},
        {{"es-ES"}, Language::spanish},
        {{"es-MX", "en"}, Language::spanish},
        {{"es-419"}, Language::spanish},
        {{"ES-AR"}, Language::spanish},
        {{"Es"}, Language::spanish},
        {{}, Language::english},
        {{"en"}, Language::english},
        {{"en-ES"}, Language::english},
        {{"en-GB", "es"}, Language::english},
        {{"ca-ES"}, Language::english},
        {{"pt-BR", "es"}, Language::english},
        {{"fr"}, Language::english},
        {{"e"}, Language::english},
        {{""}, Language::english},
    };
    for (const auto& [tags, language] : cases)
        EXPECT_EQ(languageFor(tags), language) << (tags.empty() ? "none" : tags.front());
}

}  // namespace
}  // namespace tavrin
