#include "platform/ProfileCache.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <utility>

#include "platform/ProfileData.h"

#include <sys/vfs.h>

namespace platform
{

namespace
{
std::atomic<uint64_t> s_reads{0};
std::atomic<uint64_t> s_parses{0};

constexpr int64_t NANOSECONDS = 1'000'000'000;

// Local file systems whose times come from the kernel's clock (statfs f_type values).
constexpr long FINE_CLOCK_FILE_SYSTEMS[] = {
    0xEF53,     // ext2, ext3, ext4
    0x01021994, // tmpfs
    0x9123683E, // btrfs
    0x58465342, // xfs
    0xF2F52010, // f2fs
    0x794C7630, // overlayfs, over one of these
    0x2FC12FC1, // zfs
};

int64_t Nanoseconds(const struct timespec& p_time)
{
    return static_cast<int64_t>(p_time.tv_sec) * NANOSECONDS + p_time.tv_nsec;
}

// The clock file times are taken from.
int64_t Now()
{
    struct timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return Nanoseconds(now);
}
} // namespace

uint64_t ProfileCache::GetReadCount()
{
    return s_reads.load();
}

uint64_t ProfileCache::GetParseCount()
{
    return s_parses.load();
}

ProfileCache::Result ProfileCache::Read(const std::string& p_path, std::string& p_text)
{
    s_reads.fetch_add(1);
    p_text.clear();
    std::FILE* file = std::fopen(p_path.c_str(), "rb");
    if (file == nullptr)
    {
        return errno == ENOENT ? Result::MISSING : Result::FAILED;
    }
    char chunk[16384];
    bool ok = true;
    for (;;)
    {
        const size_t got = std::fread(chunk, 1, sizeof(chunk), file);
        if (got > 0)
        {
            // The file may have grown since its size was taken.
            if (p_text.size() + got > MAX_PROFILE_BYTES)
            {
                ok = false;
                break;
            }
            p_text.append(chunk, got);
        }
        if (got < sizeof(chunk))
        {
            ok = std::ferror(file) == 0;
            break;
        }
    }
    std::fclose(file);
    if (!ok)
    {
        p_text.clear();
        return Result::FAILED;
    }
    return Result::LOADED;
}

int64_t ProfileCache::ClockTick(const std::string& p_path)
{
    struct statfs fileSystem = {};
    if (::statfs(p_path.c_str(), &fileSystem) == 0)
    {
        for (long type : FINE_CLOCK_FILE_SYSTEMS)
        {
            if (static_cast<long>(fileSystem.f_type) == type)
            {
                return FINE_TICK_NANOSECONDS;
            }
        }
    }
    return COARSE_TICK_NANOSECONDS;
}

bool ProfileCache::IsSettled(int64_t p_changedAt, int64_t p_tick, int64_t p_readAt)
{
    // Every write sets the status-change time from the kernel's clock (a modification time
    // can be set to anything). A clock set back makes every file look recent, which costs
    // reads, never a stale answer.
    return p_readAt - p_changedAt >= p_tick;
}

ProfileCache::Entry* ProfileCache::Find(const std::string& p_path)
{
    for (Entry& entry : m_entries)
    {
        if (entry.m_path == p_path)
        {
            return &entry;
        }
    }
    return nullptr;
}

ProfileData* ProfileCache::Get(const std::string& p_path, Result& p_result)
{
    p_result = Result::MISSING;
    if (p_path.empty())
    {
        return nullptr;
    }
    // Taken before the file is looked at: a change after this moment shows in its times.
    const int64_t now = Now();
    struct stat status = {};
    if (::stat(p_path.c_str(), &status) != 0)
    {
        Forget(p_path);
        p_result = (errno == ENOENT || errno == ENOTDIR) ? Result::MISSING : Result::FAILED;
        return nullptr;
    }
    if (!S_ISREG(status.st_mode) || static_cast<uintmax_t>(status.st_size) > MAX_PROFILE_BYTES)
    {
        Forget(p_path);
        p_result = Result::FAILED;
        return nullptr;
    }
    const Stamp stamp{status.st_dev, status.st_ino, status.st_size, Nanoseconds(status.st_mtim),
                      Nanoseconds(status.st_ctim)};
    Entry* entry = Find(p_path);
    if (entry != nullptr && entry->m_stamp == stamp && entry->m_settled)
    {
        entry->m_lastUse = ++m_uses;
        p_result = Result::LOADED;
        return entry->m_pData.get();
    }

    std::string text;
    p_result = Read(p_path, text);
    if (p_result != Result::LOADED)
    {
        Forget(p_path);
        return nullptr;
    }
    if (entry != nullptr && entry->m_stamp == stamp && entry->m_pData->GetText() == text)
    {
        entry->m_settled = IsSettled(stamp.m_changed, entry->m_tick, now);
        entry->m_lastUse = ++m_uses;
        return entry->m_pData.get();
    }
    return Store(p_path, stamp, now, std::move(text));
}

ProfileData* ProfileCache::Store(const std::string& p_path, const Stamp& p_stamp, int64_t p_readAt, std::string p_text)
{
    s_parses.fetch_add(1);
    auto data = std::make_unique<ProfileData>(std::move(p_text));
    Entry* entry = Find(p_path);
    if (entry == nullptr)
    {
        m_entries.emplace_back();
        entry = &m_entries.back();
        entry->m_path = p_path;
    }
    entry->m_stamp = p_stamp;
    entry->m_pData = std::move(data);
    entry->m_tick = ClockTick(p_path);
    entry->m_settled = IsSettled(p_stamp.m_changed, entry->m_tick, p_readAt);
    entry->m_lastUse = ++m_uses;
    ProfileData* stored = entry->m_pData.get();
    Trim();
    return stored;
}

void ProfileCache::Trim()
{
    for (;;)
    {
        size_t bytes = 0;
        size_t oldest = 0;
        for (size_t i = 0; i < m_entries.size(); ++i)
        {
            bytes += m_entries[i].m_pData->GetText().size();
            if (m_entries[i].m_lastUse < m_entries[oldest].m_lastUse)
            {
                oldest = i;
            }
        }
        // The newest entry always stays: the caller is about to use it.
        if (m_entries.size() <= 1 || (m_entries.size() <= MAX_FILES && bytes <= MAX_BYTES))
        {
            return;
        }
        m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(oldest));
    }
}

void ProfileCache::Forget(const std::string& p_path)
{
    for (size_t i = 0; i < m_entries.size(); ++i)
    {
        if (m_entries[i].m_path == p_path)
        {
            m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(i));
            return;
        }
    }
}

void ProfileCache::Clear()
{
    m_entries.clear();
}

} // namespace platform
