#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tavrin {
namespace {

using strings::Count;
using strings::Text;

const char* const kSize = "3.4 GB";
/// A name that looks like a placeholder: it must come out as it went in.
const char* const kName = "{n}";

std::string text(const FunctionMessage<std::string(Count)>& message, Language language, Count n) {
    return message.in(language, n);
}
std::string text(const FunctionMessage<std::string(Text)>& message, Language language, Count) {
    return message.in(language, kName);
}
std::string text(const FunctionMessage<std::string(Count, Text)>& message, Language language, Count n) {
    return message.in(language, n, kSize);
}
std::string text(const FunctionMessage<std::string(Text, Count)>& message, Language language, Count n) {
    return message.in(language, kSize, n);
}
std::string text(const FunctionMessage<std::string(Count, Count)>& message, Language language, Count n) {
    return message.in(language, n, n + 1);
}

/// Holds each message against what it must read, and knows which ones it has seen.
class Reading {
  public:
    using Texts = std::array<std::string_view, 3>;

    /// What it reads for 0, 1 and 2.
    template <class Message>
    void expect(const Message& message, const Texts& english, const Texts& spanish) {
        seen_.insert(message.row().key);
        for (std::size_t n = 0; n < english.size(); ++n) {
            EXPECT_EQ(text(message, Language::english, static_cast<Count>(n)), english.at(n)) << message.row().key;
            EXPECT_EQ(text(message, Language::spanish, static_cast<Count>(n)), spanish.at(n)) << message.row().key;
        }
    }
    template <class Message>
    void expect(const Message& message, const char* english, const char* spanish) {
        expect(message, Texts{english, english, english}, Texts{spanish, spanish, spanish});
    }

    [[nodiscard]] const std::set<std::string_view>& seen() const { return seen_; }

  private:
    std::set<std::string_view> seen_;
};

TEST(FunctionMessages, everyOneReadsAsWrittenInBothLanguagesForNoneOneAndTwo) {
    Reading read;
    // clang-format off
    read.expect(S::countItems, {"0 items", "1 item", "2 items"}, {"0 elemento(s)", "1 elemento(s)", "2 elemento(s)"});
    read.expect(S::countItemsSize,
                {"0 items · 3.4 GB", "1 item · 3.4 GB", "2 items · 3.4 GB"},
                {"0 elemento(s) · 3.4 GB", "1 elemento(s) · 3.4 GB", "2 elemento(s) · 3.4 GB"});
    read.expect(S::smartGroupSummary,
                {"0 items · 3.4 GB", "1 item · 3.4 GB", "2 items · 3.4 GB"},
                {"0 elemento(s) · 3.4 GB", "1 elemento(s) · 3.4 GB", "2 elemento(s) · 3.4 GB"});
    read.expect(S::moduleItemsFound,
                {"0 items found", "1 item found", "2 items found"},
                {"0 elemento(s) encontrados", "1 elemento(s) encontrados", "2 elemento(s) encontrados"});
    read.expect(S::moduleSelectedCount,
                {"0 selected", "1 selected", "2 selected"},
                {"0 seleccionado(s)", "1 seleccionado(s)", "2 seleccionado(s)"});
    read.expect(S::moduleMoreItems,
                {"and 0 more items…", "and 1 more item…", "and 2 more items…"},
                {"y 0 elemento(s) más…", "y 1 elemento(s) más…", "y 2 elemento(s) más…"});
    read.expect(S::moduleAppsSize,
                {"0 apps · 3.4 GB", "1 app · 3.4 GB", "2 apps · 3.4 GB"},
                {"0 app(s) · 3.4 GB", "1 app(s) · 3.4 GB", "2 app(s) · 3.4 GB"});
    read.expect(S::moduleConfirmMove,
                {"0 items · 3.4 GB will be moved to the Trash. You can put them back from History.", "1 item · 3.4 GB will be moved to the Trash. You can put them back from History.", "2 items · 3.4 GB will be moved to the Trash. You can put them back from History."},
                {"Se moverán 0 elemento(s) · 3.4 GB a la Papelera. Podrás restaurarlos desde el Historial.", "Se moverán 1 elemento(s) · 3.4 GB a la Papelera. Podrás restaurarlos desde el Historial.", "Se moverán 2 elemento(s) · 3.4 GB a la Papelera. Podrás restaurarlos desde el Historial."});
    read.expect(S::moduleConfirmRunningApps,
                {"\n\n\u26A0\uFE0E 0 of the selected apps are running. Quit them before continuing.", "\n\n\u26A0\uFE0E 1 of the selected apps is running. Quit it before continuing.", "\n\n\u26A0\uFE0E 2 of the selected apps are running. Quit them before continuing."},
                {"\n\n\u26A0\uFE0E 0 de las apps seleccionadas está abierta. Ciérrala antes de continuar.", "\n\n\u26A0\uFE0E 1 de las apps seleccionadas está abierta. Ciérrala antes de continuar.", "\n\n\u26A0\uFE0E 2 de las apps seleccionadas está abierta. Ciérrala antes de continuar."});
    read.expect(S::moduleDoneMail,
                {"0 items · 3.4 GB moved to the Trash. The space is freed when you empty it.\n\nRemember: they're in the Trash in case you need them. Don't empty it until you've confirmed that no attachment was the only local copy.", "1 item · 3.4 GB moved to the Trash. The space is freed when you empty it.\n\nRemember: they're in the Trash in case you need them. Don't empty it until you've confirmed that no attachment was the only local copy.", "2 items · 3.4 GB moved to the Trash. The space is freed when you empty it.\n\nRemember: they're in the Trash in case you need them. Don't empty it until you've confirmed that no attachment was the only local copy."},
                {"0 elemento(s) · 3.4 GB a la Papelera. El espacio se libera al vaciarla.\n\nRecuerda: están en la Papelera por si los necesitas. No la vacíes hasta confirmar que ningún adjunto era una copia local única.", "1 elemento(s) · 3.4 GB a la Papelera. El espacio se libera al vaciarla.\n\nRecuerda: están en la Papelera por si los necesitas. No la vacíes hasta confirmar que ningún adjunto era una copia local única.", "2 elemento(s) · 3.4 GB a la Papelera. El espacio se libera al vaciarla.\n\nRecuerda: están en la Papelera por si los necesitas. No la vacíes hasta confirmar que ningún adjunto era una copia local única."});
    read.expect(S::moduleError, "Error: {n}", "Error: {n}");
    read.expect(S::moduleScanPartial,
                {"Incomplete results: 0 protected folders couldn't be read. Grant “Full Disk Access” and scan again.", "Incomplete results: 1 protected folder couldn't be read. Grant “Full Disk Access” and scan again.", "Incomplete results: 2 protected folders couldn't be read. Grant “Full Disk Access” and scan again."},
                {"Resultados incompletos: 0 carpeta(s) protegida(s) no se pudieron leer. Concede “Acceso total al disco” y vuelve a escanear.", "Resultados incompletos: 1 carpeta(s) protegida(s) no se pudieron leer. Concede “Acceso total al disco” y vuelve a escanear.", "Resultados incompletos: 2 carpeta(s) protegida(s) no se pudieron leer. Concede “Acceso total al disco” y vuelve a escanear."});
    read.expect(S::moduleGroupDuplicate, "Duplicate: {n}", "Duplicado: {n}");
    read.expect(S::moduleGroupSimilar,
                {"0 similar images", "1 similar image", "2 similar images"},
                {"0 imágenes parecidas", "1 imágenes parecidas", "2 imágenes parecidas"});
    read.expect(S::cleanFailuresTitle,
                {"0 items couldn't be removed", "1 item couldn't be removed", "2 items couldn't be removed"},
                {"0 elemento(s) no se pudieron quitar", "1 elemento(s) no se pudieron quitar", "2 elemento(s) no se pudieron quitar"});
    read.expect(S::scanCheckingLabel, "Checking {n}…", "Revisando {n}…");
    read.expect(S::scanToolCaches, "Checking {n} caches…", "Cachés de {n}…");
    read.expect(S::scanMailAttachments, "Looking for {n} attachments…", "Buscando adjuntos de {n}…");
    read.expect(S::diskMapMeasuring, "Measuring {n}…", "Midiendo {n}…");
    read.expect(S::detailDuplicateOf, "Duplicate of {n}", "Duplicado de {n}");
    read.expect(S::detailSimilarTo, "Similar to {n}", "Similar a {n}");
    read.expect(S::detailNotOpenedSince, "Not opened since {n}", "Sin abrir desde {n}");
    read.expect(S::detailStaleYears,
                {" · not opened in ~0 years", " · not opened in ~1 year", " · not opened in ~2 years"},
                {" · sin abrir ~0 año(s)", " · sin abrir ~1 año(s)", " · sin abrir ~2 año(s)"});
    read.expect(S::detailIncludesRelated,
                {"Includes 0 related files · 3.4 GB", "Includes 1 related file · 3.4 GB", "Includes 2 related files · 3.4 GB"},
                {"Incluye 0 archivos asociados · 3.4 GB", "Incluye 1 archivos asociados · 3.4 GB", "Incluye 2 archivos asociados · 3.4 GB"});
    read.expect(S::detailAlsoIncludesRelated,
                {" · includes 0 related files", " · includes 1 related file", " · includes 2 related files"},
                {" · incluye 0 archivos asociados", " · incluye 1 archivos asociados", " · incluye 2 archivos asociados"});
    read.expect(S::detailAttachmentFolders,
                {"0 attachment folders · 3.4 GB", "1 attachment folder · 3.4 GB", "2 attachment folders · 3.4 GB"},
                {"0 carpeta(s) de adjuntos · 3.4 GB", "1 carpeta(s) de adjuntos · 3.4 GB", "2 carpeta(s) de adjuntos · 3.4 GB"});
    read.expect(S::detailBrowserCache, "{n} · cache (comes back on its own)", "{n} · caché (se regenera)");
    read.expect(S::historyTotalReclaimed, "Actually freed: {n}", "Liberado de verdad: {n}");
    read.expect(S::historyPutBackDone,
                {"Put back 0 items.", "Put back 1 item.", "Put back 2 items."},
                {"Restaurados 0 elemento(s).", "Restaurados 1 elemento(s).", "Restaurados 2 elemento(s)."});
    read.expect(S::historyPutBackPartial,
                {"Put back 0 · 1 couldn't be put back.", "Put back 1 · 2 couldn't be put back.", "Put back 2 · 3 couldn't be put back."},
                {"Restaurados 0, 1 fallido(s).", "Restaurados 1, 2 fallido(s).", "Restaurados 2, 3 fallido(s)."});
    read.expect(S::historyClearConfirmMessage,
                {"This clears 0 cleanups from the log. The files stay in the Trash, but the only note of where each one came from is lost, so you won't be able to put them back.", "This clears 1 cleanup from the log. The files stay in the Trash, but the only note of where each one came from is lost, so you won't be able to put them back.", "This clears 2 cleanups from the log. The files stay in the Trash, but the only note of where each one came from is lost, so you won't be able to put them back."},
                {"Se borrarán 0 limpieza(s) del registro. Los archivos seguirán en la Papelera, pero se perderá la única nota de dónde salió cada uno, así que ya no podrás devolverlos a su sitio.", "Se borrarán 1 limpieza(s) del registro. Los archivos seguirán en la Papelera, pero se perderá la única nota de dónde salió cada uno, así que ya no podrás devolverlos a su sitio.", "Se borrarán 2 limpieza(s) del registro. Los archivos seguirán en la Papelera, pero se perderá la única nota de dónde salió cada uno, así que ya no podrás devolverlos a su sitio."});
    read.expect(S::trashDone,
                {"Trash emptied · 0 items · 3.4 GB freed up.", "Trash emptied · 1 item · 3.4 GB freed up.", "Trash emptied · 2 items · 3.4 GB freed up."},
                {"Papelera vaciada · 0 elemento(s) · 3.4 GB liberados.", "Papelera vaciada · 1 elemento(s) · 3.4 GB liberados.", "Papelera vaciada · 2 elemento(s) · 3.4 GB liberados."});
    read.expect(S::trashNotifyBody,
                {"0 items · 3.4 GB freed up.", "1 item · 3.4 GB freed up.", "2 items · 3.4 GB freed up."},
                {"0 elemento(s) · 3.4 GB liberados.", "1 elemento(s) · 3.4 GB liberados.", "2 elemento(s) · 3.4 GB liberados."});
    read.expect(S::trashConfirm1Message,
                {"0 items · 3.4 GB will be deleted PERMANENTLY. This CANNOT be undone — the items can't be put back from History.", "1 item · 3.4 GB will be deleted PERMANENTLY. This CANNOT be undone — the items can't be put back from History.", "2 items · 3.4 GB will be deleted PERMANENTLY. This CANNOT be undone — the items can't be put back from History."},
                {"Se eliminarán 0 elemento(s) · 3.4 GB de forma PERMANENTE. Esto NO se puede deshacer ni restaurar desde el Historial.", "Se eliminarán 1 elemento(s) · 3.4 GB de forma PERMANENTE. Esto NO se puede deshacer ni restaurar desde el Historial.", "Se eliminarán 2 elemento(s) · 3.4 GB de forma PERMANENTE. Esto NO se puede deshacer ni restaurar desde el Historial."});
    read.expect(S::trashOnVolume, "On {n}", "En {n}");
    read.expect(S::smartConfirmMove,
                {"0 items · 3.4 GB will be moved to the Trash (you can put them back from History).", "1 item · 3.4 GB will be moved to the Trash (you can put them back from History).", "2 items · 3.4 GB will be moved to the Trash (you can put them back from History)."},
                {"Se moverán 0 elemento(s) · 3.4 GB a la Papelera (restaurables desde el Historial).", "Se moverán 1 elemento(s) · 3.4 GB a la Papelera (restaurables desde el Historial).", "Se moverán 2 elemento(s) · 3.4 GB a la Papelera (restaurables desde el Historial)."});
    read.expect(S::smartConfirmTasks,
                "These will run: {n}. You'll be asked for your administrator password.",
                "Se ejecutarán: {n}. Pedirá tu contraseña de administrador.");
    read.expect(S::smartDoneSummary,
                {"0 items · 3.4 GB moved to the Trash. The space is freed when you empty it.", "1 item · 3.4 GB moved to the Trash. The space is freed when you empty it.", "2 items · 3.4 GB moved to the Trash. The space is freed when you empty it."},
                {"0 elemento(s) · 3.4 GB a la Papelera. El espacio se libera al vaciarla.", "1 elemento(s) · 3.4 GB a la Papelera. El espacio se libera al vaciarla.", "2 elemento(s) · 3.4 GB a la Papelera. El espacio se libera al vaciarla."});
    read.expect(S::smartOptimizationsFailed,
                "These didn't run: {n}. If you dismissed the password prompt, that's why.",
                "No se ejecutaron: {n}. Si cancelaste la petición de contraseña, es normal.");
    read.expect(S::smartScanningModule, "Scanning {n}…", "Analizando {n}…");
    read.expect(S::smartSelectedItems,
                {"0 safe items selected", "1 safe item selected", "2 safe items selected"},
                {"0 elemento(s) seguros seleccionados", "1 elemento(s) seguros seleccionados", "2 elemento(s) seguros seleccionados"});
    read.expect(S::smartTrashSubtitle, "Taking up {n}. Emptying it is permanent.", "Ocupa {n}. Vaciarla es permanente.");
    read.expect(S::notifyCleanedBody,
                {"0 items · 3.4 GB moved to the Trash. Freed when you empty it.", "1 item · 3.4 GB moved to the Trash. Freed when you empty it.", "2 items · 3.4 GB moved to the Trash. Freed when you empty it."},
                {"0 elemento(s) · 3.4 GB a la Papelera. Se libera al vaciarla.", "1 elemento(s) · 3.4 GB a la Papelera. Se libera al vaciarla.", "2 elemento(s) · 3.4 GB a la Papelera. Se libera al vaciarla."});
    read.expect(S::reminderLastDaysAgo,
                {"Last cleanup: 0 days ago.", "Last cleanup: 1 day ago.", "Last cleanup: 2 days ago."},
                {"Última limpieza: hace 0 días.", "Última limpieza: hace 1 días.", "Última limpieza: hace 2 días."});
    read.expect(S::metricUsed, "{n} used", "{n} usados");
    read.expect(S::metricFree, "{n} free", "{n} libres");
    read.expect(S::metricInUse, "{n} in use", "{n} en uso");
    read.expect(S::metricTotal, "{n} total", "{n} total");
    // clang-format on
    for (const FunctionMessageRow& row : S::functionMessages())
        EXPECT_TRUE(read.seen().contains(row.key)) << row.key << " was not read";
    EXPECT_EQ(read.seen().size(), 48U);
}

TEST(FunctionMessages, theTableHasFortyEightKeysEachOnce) {
    std::set<std::string_view> keys;
    for (const FunctionMessageRow& row : S::functionMessages())
        EXPECT_TRUE(keys.insert(row.key).second) << row.key;
    EXPECT_EQ(keys.size(), 48U);
}

TEST(FunctionMessages, spanishDoesNotVaryWithTheNumber) {
    EXPECT_EQ(S::countItems.in(Language::spanish, 1), "1 elemento(s)");
    EXPECT_EQ(S::reminderLastDaysAgo.in(Language::spanish, 1), "Última limpieza: hace 1 días.");
    EXPECT_EQ(S::detailAlsoIncludesRelated.in(Language::spanish, 1), " · incluye 1 archivos asociados");
}

TEST(FunctionMessages, theEnglishSingularIsForExactlyOne) {
    EXPECT_EQ(S::countItems.in(Language::english, 1), "1 item");
    EXPECT_EQ(S::countItems.in(Language::english, 0), "0 items");
    EXPECT_EQ(S::countItems.in(Language::english, -1), "-1 items");
    EXPECT_EQ(S::countItems.in(Language::english, 21), "21 items");
}

TEST(FunctionMessages, whatCameBackAndWhatDidNotAreTwoNumbers) {
    EXPECT_EQ(S::historyPutBackPartial.in(Language::english, 2, 1), "Put back 2 · 1 couldn't be put back.");
    EXPECT_EQ(S::historyPutBackPartial.in(Language::spanish, 2, 1), "Restaurados 2, 1 fallido(s).");
}

TEST(FunctionMessages, numbersAreWrittenPlainlyWithoutGrouping) {
    EXPECT_EQ(S::countItems.in(Language::english, 1'234'567), "1234567 items");
    EXPECT_EQ(S::countItems.in(Language::spanish, 1'234'567), "1234567 elemento(s)");
    EXPECT_EQ(S::countItems.in(Language::english, INT64_MIN), "-9223372036854775808 items");
}

TEST(FunctionMessages, aPlaceholderInsideAnArgumentStaysAsItIs) {
    EXPECT_EQ(S::countItemsSize.in(Language::english, 2, "{count} {size} {"), "2 items · {count} {size} {");
    EXPECT_EQ(S::moduleGroupDuplicate.in(Language::spanish, "}{x}"), "Duplicado: }{x}");
    EXPECT_EQ(S::moduleError.in(Language::english, ""), "Error: ");
}

TEST(FunctionMessages, aCallReadsInTheRunningLanguage) {
    EXPECT_EQ(S::countItemsSize(3, "1 MB"), S::countItemsSize.in(runningLanguage(), 3, "1 MB"));
    EXPECT_EQ(S::moduleDoneMail("1 MB", 1), S::moduleDoneMail.in(runningLanguage(), "1 MB", 1));
}

// In the table these are errors of the compiler: there every row is a constant.
TEST(FunctionMessages, aRowWhoseTextsAndParametersDisagreeIsRefused) {
    using OfCount = FunctionMessage<std::string(Count)>;
    using OfText = FunctionMessage<std::string(Text)>;
    EXPECT_NO_THROW(OfCount("key", "(Count n)", "{n} item", "{n} items", "{n} elemento(s)"));
    EXPECT_THROW(OfCount("key", "(Count n)", "{m} item", "{n} items", "{n} elemento(s)"), std::logic_error);
    EXPECT_THROW(OfCount("key", "(Count n)", "{n} item", "items", "{n} elemento(s)"), std::logic_error);
    EXPECT_THROW(OfCount("key", "(Count n)", "{n} item", "{n} items", "{n elemento(s)"), std::logic_error);
    EXPECT_THROW(OfCount("key", "(Count n)", "{n} item", ""), std::logic_error);
    EXPECT_THROW(OfCount("key", "(Count n, Text x)", "{n} {x}", "{n} {x}"), std::logic_error);
    EXPECT_THROW(OfText("key", "(Text x)", "one {x}", "more {x}", "{x}"), std::logic_error);
}

}  // namespace
}  // namespace tavrin
