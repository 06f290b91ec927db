#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace platform
{

class ProfileData;

// The parsed INI files of the last few paths read, each reused until its file changes.
//
// Every call looks at the file again (one stat): a different inode, size, modification or
// status-change time (to the nanosecond) means a new file, read and parsed again. Two
// writes can still fall within one tick of the file system's clock and leave the same size
// and times, so a file whose status changed less than a tick of that clock before it was
// read is compared byte for byte on every call until it has stood still that long (while it
// has not changed, that costs a read, not a parse). The game's own writes forget the path
// outright.
class ProfileCache
{
public:
    // The tick of a local file system's clock is the kernel's (at most 10 ms), with room to
    // spare; anything else (FAT's two seconds, network file systems) gets the coarse one.
    static constexpr int64_t FINE_TICK_NANOSECONDS = 50'000'000;
    static constexpr int64_t COARSE_TICK_NANOSECONDS = 2'000'000'000;
    // The cache keeps at most this many files and this many bytes of text.
    static constexpr size_t MAX_FILES = 8;
    static constexpr size_t MAX_BYTES = 48u * 1024u * 1024u;
    // Anything bigger is not a profile; reading it whole on every call would cost more than
    // it could be worth.
    static constexpr size_t MAX_PROFILE_BYTES = 16u * 1024u * 1024u;

    enum class Result
    {
        MISSING,
        LOADED,
        FAILED
    };

    // The parse of the file at p_path (a resolved path), valid until the next call on this
    // cache; null unless the result is LOADED. An empty path counts as a missing file.
    ProfileData* Get(const std::string& p_path, Result& p_result);
    // After writing the file at p_path.
    void Forget(const std::string& p_path);
    void Clear();

    // The tick of the clock of the file system that holds p_path, as this cache assumes it.
    static int64_t ClockTick(const std::string& p_path);
    // Whether a file whose status last changed at p_changedAt, read at p_readAt (both in
    // nanoseconds of the real-time clock), can be trusted while its stamp stays the same:
    // any later change would get a later time.
    static bool IsSettled(int64_t p_changedAt, int64_t p_tick, int64_t p_readAt);
    // How many times a file was read whole, and parsed, since the program started.
    static uint64_t GetReadCount();
    static uint64_t GetParseCount();

private:
    // What identifies one version of a file.
    struct Stamp
    {
        dev_t m_device = 0;
        ino_t m_inode = 0;
        off_t m_size = 0;
        int64_t m_modified = 0; // nanoseconds
        int64_t m_changed = 0;  // nanoseconds
        bool operator==(const Stamp&) const = default;
    };
    struct Entry
    {
        std::string m_path;
        Stamp m_stamp;
        std::unique_ptr<ProfileData> m_pData;
        int64_t m_tick = 0;     // of the file system's clock
        bool m_settled = false; // stood still a tick before it was read
        uint64_t m_lastUse = 0;
    };

    static Result Read(const std::string& p_path, std::string& p_text);
    Entry* Find(const std::string& p_path);
    ProfileData* Store(const std::string& p_path, const Stamp& p_stamp, int64_t p_readAt, std::string p_text);
    void Trim();

    std::vector<Entry> m_entries;
    uint64_t m_uses = 0;
};

} // namespace platform
