#include "PictureReader.h"
#include "QuickLook.h"
#include "Support/TestFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QBuffer>
#include <QImageWriter>
#include <QtEndian>
#include <string>

namespace tavrin {
namespace {

using test::setTimes;
using test::TestFolder;

std::string encoded(const QImage& image, const char* format, bool progressive = false) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(progressive);
    EXPECT_TRUE(writer.write(image));
    return buffer.data().toStdString();
}

QImage wide() {
    QImage image(300, 100, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    return image;
}

std::string bigEndian(quint32 number) {
    std::string bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

quint32 crc(std::string_view bytes) {
    quint32 rest = 0xFFFFFFFF;
    for (const char byte : bytes) {
        rest ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            rest = (rest >> 1U) ^ (0xEDB88320U & (0U - (rest & 1U)));
    }
    return ~rest;
}

// A PNG that claims a size and holds nothing of it.
std::string claiming(quint32 width, quint32 height, bool interlaced) {
    const std::string header =
        "IHDR" + bigEndian(width) + bigEndian(height) + std::string("\x08\x02\0\0", 4) + (interlaced ? '\1' : '\0');
    return std::string("\x89PNG\r\n\x1a\n") + bigEndian(13) + header + bigEndian(crc(header));
}

TEST(PictureReader, aPictureIsScaledDownToFitOrToFillAndNeverUp) {
    const TestFolder home;
    const URL file = home.file("wide.png", encoded(wide(), "png"));
    EXPECT_EQ(readPicture(file, {60, 60}).size(), QSize(60, 20));
    EXPECT_EQ(readPicture(file, {60, 60}, Qt::KeepAspectRatioByExpanding).size(), QSize(180, 60));
    EXPECT_EQ(readPicture(file, {900, 900}).size(), QSize(300, 100));
}

TEST(PictureReader, aNameThatIsNoTextIsReadToo) {
    const TestFolder home;
    EXPECT_FALSE(readPicture(home.file("\xFF#?%.png", encoded(wide(), "png")), {60, 60}).isNull());
}

// Larger than any buffer on the way, and full of places that a reader must find again.
TEST(PictureReader, whatIsReadIsWhatTheFileHolds) {
    QImage noisy(600, 400, QImage::Format_RGB32);
    quint32 chance = 1;
    for (int y = 0; y < noisy.height(); ++y)
        for (int x = 0; x < noisy.width(); ++x)
            noisy.setPixel(x, y, (chance = chance * 1'664'525U + 1'013'904'223U) | 0xFF000000U);
    const TestFolder home;
    for (const char* format : {"png", "bmp", "jpg", "ppm"}) {
        const std::string bytes = encoded(noisy, format);
        const QImage expected = QImage::fromData(QByteArray::fromStdString(bytes));
        const QImage read = readPicture(home.file(format, bytes), noisy.size());
        EXPECT_EQ(read.convertToFormat(expected.format()), expected) << format;
    }
}

TEST(PictureReader, aLookAtAPictureIsNoUseOfIt) {
    const TestFolder home;
    const URL file = home.file("old.png", encoded(wide(), "png"));
    // Older than the modification: any other program's read would be written down (relatime).
    setTimes(file, Date::fromUnix(1'000'000), Date::fromUnix(2'000'000));
    EXPECT_FALSE(readPicture(file, {60, 60}).isNull());
    struct stat status {};
    ASSERT_EQ(::stat(file.path().c_str(), &status), 0);
    EXPECT_EQ(status.st_atim.tv_sec, 1'000'000);
}

TEST(PictureReader, aProgressivePictureIsRead) {
    const TestFolder home;
    EXPECT_FALSE(readPicture(home.file("a.jpg", encoded(wide(), "jpg", true)), {60, 60}).isNull());
}

TEST(PictureReader, whatIsBrokenOrNoPictureGivesNone) {
    const TestFolder home;
    EXPECT_TRUE(readPicture(home.file("a.png", "no picture"), {60, 60}).isNull());
    EXPECT_TRUE(readPicture(home.file("b.png", ""), {60, 60}).isNull());
    EXPECT_TRUE(readPicture(home.file("c.png", claiming(100, 100, false)), {60, 60}).isNull());
    EXPECT_TRUE(readPicture(home.folder("d.png"), {60, 60}).isNull());
    EXPECT_TRUE(readPicture(home / "gone.png", {60, 60}).isNull());
}

TEST(PictureReader, aPipeIsNotWaitedFor) {
    const TestFolder home;
    ASSERT_EQ(::mkfifo((home / "pipe.png").path().c_str(), 0600), 0);
    EXPECT_TRUE(readPicture(home / "pipe.png", {60, 60}).isNull());
}

// Decoding would allocate gigabytes; the header is enough to refuse.
TEST(PictureReader, aPictureThatClaimsTooMuchIsRefusedByItsHeader) {
    EXPECT_FALSE(isWithinCaps({60'000, 60'000}, false));
    EXPECT_FALSE(isWithinCaps({15'000, 10'001}, false));
    EXPECT_TRUE(isWithinCaps({15'000, 10'000}, false));
    EXPECT_FALSE(isWithinCaps({8'000, 5'001}, true));
    EXPECT_TRUE(isWithinCaps({8'000, 5'000}, true));
    EXPECT_FALSE(isWithinCaps({0, 10}, false));
    const TestFolder home;
    EXPECT_TRUE(readPicture(home.file("bomb.png", claiming(60'000, 60'000, false)), {60, 60}).isNull());
}

TEST(PictureReader, aPictureInPassesIsToldByItsHeader) {
    const auto inPasses = [](const std::string& bytes) {
        QBuffer buffer;
        buffer.setData(QByteArray::fromStdString(bytes));
        buffer.open(QIODevice::ReadOnly);
        return comesInPasses(buffer);
    };
    EXPECT_TRUE(inPasses(claiming(100, 100, true)));
    EXPECT_FALSE(inPasses(claiming(100, 100, false)));
    EXPECT_TRUE(inPasses(encoded(wide(), "jpg", true)));
    EXPECT_FALSE(inPasses(encoded(wide(), "jpg", false)));
    EXPECT_FALSE(inPasses(""));
}

TEST(PictureReader, aSquareHasRoundCornersAndIsFilledToItsEdges) {
    const QImage square = roundedSquare(wide(), 40, 0.25);
    EXPECT_EQ(square.size(), QSize(40, 40));
    EXPECT_EQ(qAlpha(square.pixel(0, 0)), 0);
    EXPECT_EQ(square.pixelColor(20, 0), QColor(Qt::darkCyan));
    EXPECT_EQ(square.pixelColor(0, 20), QColor(Qt::darkCyan));
}

TEST(PreviewFacts, theBeginningOfATextIsEnough) {
    const TestFolder home;
    const PreviewFacts facts = previewFacts(home.file("a.txt", std::string(200'000, 'x')));
    EXPECT_TRUE(facts.isText);
    EXPECT_EQ(facts.text.size(), 64 * 1024);
    EXPECT_EQ(facts.bytes, 200'000);
    EXPECT_FALSE(facts.created.isEmpty());
    EXPECT_FALSE(facts.modified.isEmpty());
}

TEST(PreviewFacts, aFolderAndAPipeAreNamedAndNotRead) {
    const TestFolder home;
    EXPECT_TRUE(previewFacts(home.folder("a")).isDirectory);
    ASSERT_EQ(::mkfifo((home / "pipe.txt").path().c_str(), 0600), 0);
    const PreviewFacts pipe = previewFacts(home / "pipe.txt");
    EXPECT_EQ(pipe.name, QStringLiteral("pipe.txt"));
    EXPECT_FALSE(pipe.isText);
}

TEST(PreviewFacts, whatIsGoneHasItsNameAndNothingElse) {
    const PreviewFacts facts = previewFacts(URL::fromPath("/nowhere/\xFFname"));
    EXPECT_EQ(facts.name, QStringLiteral("\uFFFDname"));
    EXPECT_FALSE(facts.bytes.has_value());
    EXPECT_TRUE(facts.modified.isEmpty());
}

}  // namespace
}  // namespace tavrin
