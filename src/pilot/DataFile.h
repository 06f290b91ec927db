#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

// The one reader and writer of the game's binary data files (parts, pilots, levels, entities,
// weapons). Numbers are little-endian with no padding; a string is one length byte n (0..255)
// followed by n characters without a terminator. Each loader reads its fields in its own
// order and so defines its format.
//
// File names are game names ("GOB\Parts\hull000.hul") resolved through platform::ResolvePath.
// A file opened for writing ("wb") is written under a temporary name beside it and only
// renamed over the real name by Close, so a failed or interrupted write never leaves a broken
// save or part file behind.
class DataFile
{
public:
    // Origins for Seek, as the standard library's.
    static constexpr int ORIGIN_START = SEEK_SET;
    static constexpr int ORIGIN_CURRENT = SEEK_CUR;
    static constexpr int ORIGIN_END = SEEK_END;

    static constexpr size_t MAX_STRING_LENGTH = 255;

    DataFile() = default;
    // Closes a file left open; a file being written that was never closed is discarded.
    ~DataFile();
    DataFile(const DataFile&) = delete;
    DataFile& operator=(const DataFile&) = delete;

    // Keeps copies of the name and mode and opens the stream ("rb" to read, "wb" to write).
    // A file still open from before is closed first.
    bool Open(const char* p_fileName, const char* p_mode);
    // Closes the stream when one is open; a file being written takes its real name now,
    // unless a write failed, in which case the old file (if any) is kept. Answers true.
    bool Close();
    // Moves the read or write position (origin first: ORIGIN_START, ORIGIN_CURRENT, ORIGIN_END).
    bool Seek(int p_origin, int32_t p_offset);

    // Each read takes exactly its width. Past the end of the file a number reads as 0, a
    // string as "", and the position stays at the end.
    uint8_t ReadUInt8();
    int8_t ReadInt8();
    uint16_t ReadUInt16();
    int16_t ReadInt16();
    int32_t ReadInt32();
    uint32_t ReadUInt32();
    int32_t ReadLong(); // 4 bytes, whatever the platform's long
    float ReadFloat();
    double ReadDouble();
    // The text stays owned by the DataFile and is replaced by the next string read: copy it
    // at once to keep it. Never null.
    const char* ReadString();
    // Exactly p_length characters with no length byte before them.
    const char* ReadFixedString(uint32_t p_length);

    // Each write answers true when its one item was written.
    bool WriteUInt8(uint8_t p_value);
    bool WriteInt8(int8_t p_value);
    bool WriteUInt16(uint16_t p_value);
    bool WriteInt16(int16_t p_value);
    bool WriteInt32(int32_t p_value);
    bool WriteUInt32(uint32_t p_value);
    bool WriteLong(int32_t p_value);
    bool WriteFloat(float p_value);
    bool WriteDouble(double p_value);
    // A text longer than 255 characters cannot be stored: it is refused whole (nothing is
    // written, false), never cut or written with a wrong length. A null text is written as "".
    bool WriteString(const char* p_text);
    bool WriteString(const std::string& p_text);

    // The read or write position in bytes, or -1 without an open file.
    int64_t Tell() const;
    // True once a read since Open asked for more than the file still held. Tools use it to
    // tell a short file from one whose values happen to be 0.
    bool HasReadPastEnd() const { return m_readPastEnd; }

    bool IsOpen() const { return m_pFile != nullptr; }
    const std::string& GetFileName() const { return m_fileName; }
    const std::string& GetMode() const { return m_mode; }
    // The text of the last string read (the same characters ReadString answered).
    const std::string& GetLastString() const { return m_string; }
    // True when a write since Open failed or was refused, or when the last Close could not
    // put the written file in place. Tools check it; the game's writers do not.
    bool HasFailed() const { return m_failed; }

private:
    bool ReadBytes(void* p_buffer, size_t p_count);
    bool WriteBytes(const void* p_buffer, size_t p_count);
    void Discard();

    std::FILE* m_pFile = nullptr;
    std::string m_fileName;
    std::string m_mode;
    std::string m_string;
    std::string m_finalPath; // resolved real name while writing
    std::string m_tempPath;  // the name written to until Close
    bool m_failed = false;
    bool m_readPastEnd = false;
};
