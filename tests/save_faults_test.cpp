// Every system call of a save is made to fail in turn, and the program is killed at each of them.
// This program's own definitions of those calls stand before the system's.

#include "catalogue/catalogue_file.h"
#include "platform/core/kept_versions.h"
#include "platform/core/text_file.h"
#include "support.h"
#include "worldmap/map_file.h"

#include <QDir>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <iostream>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

enum class Call { Open, Read, Write, Sync, Rename, Unlink, MakeFolder, Garble };

/// The fault that is to come: the nth call of a kind fails, or all from that one on.
struct Fault {
    Call call = Call::Open;
    int error = 0; ///< 0 for none
    int nth = 1;
    bool lasts = false;
    const char* where = nullptr; ///< end of the path that it is about
    int seen = 0;
    bool came = false;
} fault;

int callsToLive = 0; ///< the program kills itself at the last of them; endless from 0 down

bool isLastCall()
{
    return callsToLive > 0 && --callsToLive == 0;
}

/// Whether a call is to fail now; errno is set then.
bool fails(Call call, const char* path = nullptr)
{
    if (call != Call::Write && isLastCall())
        raise(SIGKILL);
    if (fault.error == 0 || fault.call != call)
        return false;
    if (fault.where && path && !std::string_view(path).ends_with(fault.where))
        return false;
    ++fault.seen;
    if (fault.seen != fault.nth && !(fault.lasts && fault.seen > fault.nth))
        return false;
    fault.came = true;
    errno = fault.error;
    return true;
}

template <typename Function>
Function* systems(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

int open64(const char* path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    static auto* const real = systems<int(const char*, int, ...)>("open64");
    return fails(Call::Open) ? -1 : real(path, flags, mode);
}

ssize_t read(int file, void* bytes, size_t size)
{
    static auto* const real = systems<ssize_t(int, void*, size_t)>("read");
    return fails(Call::Read) ? -1 : real(file, bytes, size);
}

ssize_t write(int file, const void* bytes, size_t size)
{
    static auto* const real = systems<ssize_t(int, const void*, size_t)>("write");
    if (isLastCall()) {
        real(file, bytes, size / 2);
        raise(SIGKILL);
    }
    if (fault.call == Call::Garble && fails(Call::Garble))
        return real(file, std::string(size, '?').data(), size);
    return fails(Call::Write) ? -1 : real(file, bytes, size);
}

int fsync(int file)
{
    static auto* const real = systems<int(int)>("fsync");
    return fails(Call::Sync) ? -1 : real(file);
}

int rename(const char* from, const char* to) noexcept
{
    static auto* const real = systems<int(const char*, const char*)>("rename");
    return fails(Call::Rename, to) ? -1 : real(from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned int flags) noexcept
{
    static auto* const real =
        systems<int(int, const char*, int, const char*, unsigned int)>("renameat2");
    return fails(Call::Rename, to) ? -1 : real(fromFolder, from, toFolder, to, flags);
}

int unlink(const char* path) noexcept
{
    static auto* const real = systems<int(const char*)>("unlink");
    return fails(Call::Unlink) ? -1 : real(path);
}

int mkdir(const char* path, mode_t mode) noexcept
{
    static auto* const real = systems<int(const char*, mode_t)>("mkdir");
    return fails(Call::MakeFolder) ? -1 : real(path, mode);
}

} // extern "C"

namespace {

const QString mapName = u"mapas/Isla.map"_s;

WorldMap mapOf(const QString& tile, int side = 20)
{
    WorldMap map;
    map.nombre = u"Isla"_s;
    map.mapaTiles = platform::Grid<QString>(side, side, tile);
    return map;
}

std::vector<QByteArray> versionsOf(const TempAppFolder& app)
{
    std::vector<QByteArray> contents;
    for (const platform::KeptVersion& version : platform::keptVersions(app.path(mapName)))
        contents.push_back(platform::readFile(version.path, 100'000'000));
    return contents;
}

bool isKept(const TempAppFolder& app, const QByteArray& content)
{
    const std::vector<QByteArray> versions = versionsOf(app);
    return std::find(versions.begin(), versions.end(), content) != versions.end();
}

/// Saves a map over one that another program wrote, with a fault; checks what must hold whatever
/// comes. Prints a line of what was told. Returns whether the fault came.
bool saveWith(const Fault& wanted, const QString& description)
{
    const TempAppFolder app;
    const QByteArray old = mapFileBytes(mapOf(u"M1"_s));
    const QByteArray fresh = mapFileBytes(mapOf(u"T1"_s));
    app.write(mapName, old);
    platform::KnownFile known;
    QString told;
    bool isSaved = false;
    fault = wanted;
    try {
        const platform::Saved saved = saveMapFile(mapOf(u"T1"_s), known);
        isSaved = true;
        told = saved.notices.join(u" | "_s);
    } catch (const platform::Error& error) {
        told = error.description;
    }
    const bool came = fault.came;
    fault = {};

    SCOPED_TRACE((description + u": "_s + told).toStdString());
    const QByteArray now = app.read(mapName);
    EXPECT_TRUE(now == old || now == fresh || isKept(app, old)) << "neither whole";
    EXPECT_TRUE(!isSaved || now == fresh);
    EXPECT_TRUE(isSaved || (told.contains(u"Isla"_s) && told.endsWith(u'.'))) << "what, and why";
    EXPECT_TRUE(now == old || isKept(app, old) || !told.isEmpty()) << "a lost version is told of";
    if (came)
        std::cout << description.toStdString() << ": "
                  << (now == fresh ? "new"
                      : now == old ? "old"
                                   : "mixed")
                  << (isKept(app, old) ? ", old one kept: " : ": ") << told.toStdString() << '\n';

    // Whatever it was, the next save works.
    saveMapFile(mapOf(u"T2"_s), known);
    EXPECT_EQ(app.read(mapName), mapFileBytes(mapOf(u"T2"_s)));
    return came;
}

/// Runs a task in another process that kills itself at the nth call, a write halfway through.
/// Returns whether it came to that call.
bool isKilledAt(int nth, const std::function<void()>& task)
{
    const pid_t child = fork();
    if (child == 0) {
        callsToLive = nth;
        try {
            task();
        } catch (...) {
            _exit(1); // not back into the test
        }
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0) << "the task failed";
    return WIFSIGNALED(status);
}

} // namespace

TEST(SaveFaults, LeaveTheOldOrTheNewFileWhole)
{
    const std::vector<std::pair<Call, QString>> calls{
        {Call::Open, u"open"_s},       {Call::Read, u"read"_s},     {Call::Write, u"write"_s},
        {Call::Sync, u"fsync"_s},      {Call::Rename, u"rename"_s}, {Call::Unlink, u"unlink"_s},
        {Call::MakeFolder, u"mkdir"_s}};
    const std::vector<std::pair<int, QString>> errors{
        {ENOSPC, u"ENOSPC"_s}, {EIO, u"EIO"_s}, {EACCES, u"EACCES"_s}, {EINTR, u"EINTR"_s}};
    for (const auto& [call, callName] : calls) {
        for (const auto& [error, errorName] : errors) {
            for (const bool lasts : {false, true}) {
                if (error == EINTR && lasts)
                    continue; // no call is interrupted for ever
                int nth = 1;
                while (saveWith({.call = call, .error = error, .nth = nth, .lasts = lasts},
                                u"%1 %2 %3%4"_s.arg(callName, errorName)
                                    .arg(nth)
                                    .arg(lasts ? u"+"_s : QString())))
                    ++nth;
                EXPECT_GT(nth, 1) << callName.toStdString() << " is never called";
            }
        }
    }
}

TEST(SaveFaults, AnInterruptedCallIsTriedAgain)
{
    for (const Call call : {Call::Open, Call::Read, Call::Write, Call::Sync}) {
        const TempAppFolder app;
        app.write(mapName, "ajeno");
        fault = {.call = call, .error = EINTR};
        EXPECT_EQ(saveMapFile(mapOf(u"T1"_s)).notices, QStringList());
        EXPECT_TRUE(fault.came);
        fault = {};
        EXPECT_TRUE(isKept(app, "ajeno"));
    }
}

TEST(SaveFaults, WhatIsNotReadBackIsNotSaved)
{
    const TempAppFolder app;
    platform::KnownFile known;
    saveMapFile(mapOf(u"M1"_s), known);
    fault = {.call = Call::Garble, .error = EIO, .lasts = true};
    expectError([&] { saveMapFile(mapOf(u"T1"_s), known); }, platform::ErrorNumber::FileUnwritable,
                {u"no se puede volver a leer"_s});
    fault = {};
    EXPECT_EQ(app.read(mapName), mapFileBytes(mapOf(u"M1"_s)));
}

TEST(SaveFaults, AKilledSaveLeavesAWholeFile)
{
    const TempAppFolder app;
    app.addShippedData();
    Catalogue armas(armasKind());
    armas.items.setColumns(armas.kind.fields);
    loadCatalogue(armas);
    saveCatalogue(armas);
    const QByteArray catalogue = app.read(u"ini/Armas.ini"_s);
    const WorldMap small = mapOf(u"M1"_s);
    const WorldMap large = mapOf(u"Colinas"_s);
    for (const bool grows : {false, true}) {
        for (const bool inPlace : {false, true}) {
            const QByteArray old = mapFileBytes(grows ? small : large);
            const WorldMap& map = grows ? large : small;
            const auto save = [&] {
                if (inPlace) // its folder takes no new files
                    fault = {.call = Call::Rename,
                             .error = EACCES,
                             .lasts = true,
                             .where = "/mapas/Isla.map"};
                saveMapFile(map);
                saveCatalogue(armas);
            };
            int nth = 0;
            bool isKilled = true;
            while (isKilled) {
                SCOPED_TRACE(testing::Message()
                             << (inPlace ? "in place, call " : "call ") << ++nth);
                app.write(mapName, old);
                QDir(app.path(u"respaldo"_s)).removeRecursively();
                isKilled = isKilledAt(nth, save);
                const QByteArray now = app.read(mapName);
                EXPECT_TRUE(now == old || now == mapFileBytes(map) || inPlace) << "not whole";
                EXPECT_TRUE(now == old || isKept(app, old));
                EXPECT_LE(versionsOf(app).size(), 1u) << "a half version";
                EXPECT_EQ(QDir(app.path(u"mapas"_s)).entryList({u"Isla*.map"_s}).size(), 1);
                EXPECT_EQ(app.read(u"ini/Armas.ini"_s), catalogue);
            }
            EXPECT_GT(nth, 30) << "few calls are seen";
        }
    }
}
