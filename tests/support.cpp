#include "support.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <csignal>
#include <ostream>
#include <sys/resource.h>
#include <unistd.h>

TempAppFolder::TempAppFolder() : scope_(folder_.path())
{
    EXPECT_TRUE(folder_.isValid());
    QFile::setPermissions(path(), openFolder); // WithoutPrivileges has to get in
}

QString TempAppFolder::path(const QString& relative) const
{
    return relative.isEmpty() ? folder_.path() : folder_.filePath(relative);
}

void TempAppFolder::write(const QString& relative, const QByteArray& bytes) const
{
    const QString file = path(relative);
    QDir().mkpath(QFileInfo(file).path());
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly)) << file.toStdString();
    ASSERT_EQ(out.write(bytes), bytes.size());
}

QByteArray TempAppFolder::read(const QString& relative) const
{
    QFile in(path(relative));
    EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << relative.toStdString();
    return in.readAll();
}

void TempAppFolder::addShippedData() const
{
    const QDir source(shippedDataFolder());
    QDirIterator files(source.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString target = path(source.relativeFilePath(files.next()));
        QDir().mkpath(QFileInfo(target).path());
        ASSERT_TRUE(QFile::copy(files.filePath(), target));
    }
}

QString shippedDataFolder()
{
    return QStringLiteral(KESTRUNE_DATA);
}

QByteArray onePixelGif()
{
    return QByteArray::fromHex(
        "47494638396101000100800000000000ffffff2c00000000010001000002024401003b");
}

QByteArray plainGif(QSize size)
{
    const auto number = [](int value) {
        return QByteArray(1, static_cast<char>(value & 0xFF)) + static_cast<char>(value >> 8);
    };
    const QByteArray sides = number(size.width()) + number(size.height());
    // Codes of eight bits, as long as the decoder forgets what it learned before it needs nine.
    constexpr char clear = '\x80';
    constexpr char end = '\x81';
    constexpr int untilNine = 100;
    QByteArray codes;
    for (int pixel = 0; pixel < size.width() * size.height(); ++pixel) {
        if (pixel % untilNine == 0)
            codes += clear;
        codes += '\0';
    }
    codes += end;
    QByteArray gif = "GIF89a" + sides + "\xF6" + QByteArray(2 + 3 * 128, '\0') + ',' +
                     QByteArray(4, '\0') + sides + QByteArray(1, '\0') + '\x07';
    constexpr int longestBlock = 255;
    for (qsizetype at = 0; at < codes.size(); at += longestBlock) {
        const QByteArray block = codes.mid(at, longestBlock);
        gif += static_cast<char>(block.size()) + block;
    }
    return gif + '\0' + ';';
}

void expectError(const std::function<void()>& call, platform::ErrorNumber number,
                 const QStringList& fragments)
{
    try {
        call();
        ADD_FAILURE() << "no error";
    } catch (const platform::Error& error) {
        EXPECT_EQ(error.number, number) << error.what();
        for (const QString& fragment : fragments)
            EXPECT_TRUE(error.description.contains(fragment))
                << fragment.toStdString() << " is not in: " << error.what();
    }
}

namespace {
constexpr uid_t nobody = 65534;
}

WithoutPrivileges::WithoutPrivileges()
{
    if (getuid() == 0) {
        EXPECT_EQ(seteuid(nobody), 0);
    }
}

WithoutPrivileges::~WithoutPrivileges()
{
    if (getuid() == 0) {
        EXPECT_EQ(seteuid(0), 0);
    }
}

FullDisk::FullDisk(unsigned long bytes)
{
    std::signal(SIGXFSZ, SIG_IGN); // the write fails instead of ending the process
    rlimit limit{};
    EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    previous_ = limit.rlim_cur;
    limit.rlim_cur = bytes;
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

FullDisk::~FullDisk()
{
    rlimit limit{};
    EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    limit.rlim_cur = previous_;
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

platform::MemoryDC noise(int width, int height, std::mt19937::result_type seed)
{
    std::mt19937 engine(seed);
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, 0xff000000 | static_cast<QRgb>(engine()));
    }
    return platform::MemoryDC(image);
}

void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}
