#include "SymbolTable.h"
#include "TavrinCore/Models/ModuleKind.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <set>
#include <string>

namespace tavrin {
namespace {

QString resource(std::string_view file) {
    return QStringLiteral(":/qt/qml/Tavrin/Theme/icons/%1.svg").arg(QString::fromStdString(std::string(file)));
}

// What the QML of the program names as a symbol.
std::set<std::string> keysUsedInViews() {
    static const QRegularExpression use(QStringLiteral(R"re((?:symbol|key|Symbol)\s*:[^\n]*)re"));
    static const QRegularExpression quoted(QStringLiteral(R"re("([a-z0-9.]+)")re"));
    std::set<std::string> keys;
    QDirIterator files(QStringLiteral(TAVRIN_SOURCES), {QStringLiteral("*.qml")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly)) ADD_FAILURE() << qPrintable(file.fileName());
        const QString text = QString::fromUtf8(file.readAll());
        for (auto uses = use.globalMatch(text); uses.hasNext();) {
            const QString line = uses.next().captured();
            for (auto names = quoted.globalMatch(line); names.hasNext();)
                keys.insert(names.next().captured(1).toStdString());
        }
    }
    return keys;
}

TEST(Symbols, everyKeyHasADrawing) {
    ASSERT_GE(symbolFiles().size(), 60U);
    for (const SymbolFile& entry : symbolFiles()) {
        QSvgRenderer drawing(resource(entry.file));
        EXPECT_TRUE(drawing.isValid()) << entry.key;
        EXPECT_EQ(drawing.viewBox(), QRect(0, 0, 256, 256)) << entry.key;
    }
}

TEST(Symbols, everyDrawingIsUsed) {
    std::set<QString> used;
    for (const SymbolFile& entry : symbolFiles())
        used.insert(resource(entry.file));
    QDirIterator files(QStringLiteral(":/qt/qml/Tavrin/Theme/icons"), QDir::Files);
    while (files.hasNext())
        EXPECT_TRUE(used.contains(files.next())) << qPrintable(files.filePath());
}

TEST(Symbols, everyModuleHasOne) {
    for (const ModuleKind kind : allModuleKinds)
        EXPECT_FALSE(symbolFile(symbol(kind)).empty()) << symbol(kind);
}

TEST(Symbols, everyKeyThatAViewNamesIsThere) {
    const std::set<std::string> keys = keysUsedInViews();
    EXPECT_TRUE(keys.contains("magnifyingglass"));
    for (const std::string& key : keys)
        EXPECT_FALSE(symbolFile(key).empty()) << key;
}

TEST(Symbols, anUnknownKeyHasNone) {
    EXPECT_TRUE(symbolFile("").empty());
    EXPECT_TRUE(symbolFile("trash.").empty());
    EXPECT_TRUE(symbolFile("zzz").empty());
}

}  // namespace
}  // namespace tavrin
