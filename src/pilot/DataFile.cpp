#include "pilot/DataFile.h"

#include "platform/Paths.h"

#include <cstring>
#include <filesystem>
#include <system_error>

#include <unistd.h>

namespace
{

uint64_t DecodeLittle(const uint8_t* p_bytes, size_t p_count)
{
    uint64_t value = 0;
    for (size_t i = p_count; i > 0; --i)
    {
        value = (value << 8) | p_bytes[i - 1];
    }
    return value;
}

void EncodeLittle(uint64_t p_value, uint8_t* p_bytes, size_t p_count)
{
    for (size_t i = 0; i < p_count; ++i)
    {
        p_bytes[i] = static_cast<uint8_t>(p_value >> (8 * i));
    }
}

} // namespace

DataFile::~DataFile()
{
    if (m_pFile != nullptr)
    {
        if (m_tempPath.empty())
        {
            Close();
        }
        else
        {
            // An unfinished write must not replace a good file.
            Discard();
        }
    }
}

bool DataFile::Open(const char* p_fileName, const char* p_mode)
{
    if (m_pFile != nullptr)
    {
        Close();
    }
    m_fileName = p_fileName != nullptr ? p_fileName : "";
    m_mode = p_mode != nullptr ? p_mode : "";
    m_failed = false;
    m_readPastEnd = false;
    if (p_fileName == nullptr || p_mode == nullptr || m_mode.empty())
    {
        return false;
    }
    const std::string path = platform::ResolvePath(m_fileName);
    if (path.empty())
    {
        return false;
    }
    if (m_mode[0] == 'w')
    {
        std::error_code ec;
        if (std::filesystem::is_directory(path, ec))
        {
            return false;
        }
        m_finalPath = path;
        static unsigned s_writeCount = 0;
        m_tempPath = path + ".tmp" + std::to_string(::getpid()) + "_" + std::to_string(++s_writeCount);
        m_pFile = std::fopen(m_tempPath.c_str(), m_mode.c_str());
        if (m_pFile == nullptr)
        {
            m_finalPath.clear();
            m_tempPath.clear();
        }
    }
    else
    {
        std::error_code ec;
        if (std::filesystem::is_directory(path, ec))
        {
            return false; // fopen would open a folder for reading on Linux
        }
        m_pFile = std::fopen(path.c_str(), m_mode.c_str());
    }
    return m_pFile != nullptr;
}

bool DataFile::Close()
{
    if (m_pFile == nullptr)
    {
        return true;
    }
    if (m_tempPath.empty())
    {
        std::fclose(m_pFile);
        m_pFile = nullptr;
        return true;
    }
    const bool flushed = std::fflush(m_pFile) == 0 && ::fsync(::fileno(m_pFile)) == 0;
    const bool closed = std::fclose(m_pFile) == 0;
    m_pFile = nullptr;
    std::error_code ec;
    if (!m_failed && flushed && closed)
    {
        std::filesystem::rename(m_tempPath, m_finalPath, ec);
    }
    if (m_failed || !flushed || !closed || ec)
    {
        m_failed = true;
        std::filesystem::remove(m_tempPath, ec);
    }
    m_tempPath.clear();
    m_finalPath.clear();
    return true;
}

void DataFile::Discard()
{
    std::fclose(m_pFile);
    m_pFile = nullptr;
    std::error_code ec;
    std::filesystem::remove(m_tempPath, ec);
    m_tempPath.clear();
    m_finalPath.clear();
}

bool DataFile::Seek(int p_origin, int32_t p_offset)
{
    if (m_pFile == nullptr)
    {
        return false;
    }
    if (p_origin != ORIGIN_START && p_origin != ORIGIN_CURRENT && p_origin != ORIGIN_END)
    {
        return false;
    }
    return std::fseek(m_pFile, p_offset, p_origin) == 0;
}

bool DataFile::ReadBytes(void* p_buffer, size_t p_count)
{
    if (m_pFile == nullptr)
    {
        return false;
    }
    if (p_count == 0)
    {
        return true;
    }
    // A short read leaves the position at the end of the file, where it stays.
    if (std::fread(p_buffer, 1, p_count, m_pFile) != p_count)
    {
        m_readPastEnd = true;
        return false;
    }
    return true;
}

int64_t DataFile::Tell() const
{
    if (m_pFile == nullptr)
    {
        return -1;
    }
    return static_cast<int64_t>(std::ftell(m_pFile));
}

uint8_t DataFile::ReadUInt8()
{
    uint8_t bytes[1];
    return ReadBytes(bytes, 1) ? bytes[0] : 0;
}

int8_t DataFile::ReadInt8()
{
    return static_cast<int8_t>(ReadUInt8());
}

uint16_t DataFile::ReadUInt16()
{
    uint8_t bytes[2];
    return ReadBytes(bytes, 2) ? static_cast<uint16_t>(DecodeLittle(bytes, 2)) : 0;
}

int16_t DataFile::ReadInt16()
{
    return static_cast<int16_t>(ReadUInt16());
}

uint32_t DataFile::ReadUInt32()
{
    uint8_t bytes[4];
    return ReadBytes(bytes, 4) ? static_cast<uint32_t>(DecodeLittle(bytes, 4)) : 0;
}

int32_t DataFile::ReadInt32()
{
    return static_cast<int32_t>(ReadUInt32());
}

int32_t DataFile::ReadLong()
{
    return ReadInt32();
}

float DataFile::ReadFloat()
{
    const uint32_t bits = ReadUInt32();
    float value;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

double DataFile::ReadDouble()
{
    uint8_t bytes[8];
    if (!ReadBytes(bytes, 8))
    {
        return 0.0;
    }
    const uint64_t bits = DecodeLittle(bytes, 8);
    double value;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

const char* DataFile::ReadString()
{
    uint8_t length = 0;
    if (!ReadBytes(&length, 1))
    {
        m_string.clear();
        return m_string.c_str();
    }
    return ReadFixedString(length);
}

const char* DataFile::ReadFixedString(uint32_t p_length)
{
    m_string.assign(p_length, '\0');
    if (!ReadBytes(m_string.data(), p_length))
    {
        m_string.clear();
    }
    return m_string.c_str();
}

bool DataFile::WriteBytes(const void* p_buffer, size_t p_count)
{
    if (m_pFile == nullptr)
    {
        return false;
    }
    if (std::fwrite(p_buffer, 1, p_count, m_pFile) != p_count)
    {
        m_failed = true;
        return false;
    }
    return true;
}

bool DataFile::WriteUInt8(uint8_t p_value)
{
    return WriteBytes(&p_value, 1);
}

bool DataFile::WriteInt8(int8_t p_value)
{
    return WriteUInt8(static_cast<uint8_t>(p_value));
}

bool DataFile::WriteUInt16(uint16_t p_value)
{
    uint8_t bytes[2];
    EncodeLittle(p_value, bytes, 2);
    return WriteBytes(bytes, 2);
}

bool DataFile::WriteInt16(int16_t p_value)
{
    return WriteUInt16(static_cast<uint16_t>(p_value));
}

bool DataFile::WriteUInt32(uint32_t p_value)
{
    uint8_t bytes[4];
    EncodeLittle(p_value, bytes, 4);
    return WriteBytes(bytes, 4);
}

bool DataFile::WriteInt32(int32_t p_value)
{
    return WriteUInt32(static_cast<uint32_t>(p_value));
}

bool DataFile::WriteLong(int32_t p_value)
{
    return WriteInt32(p_value);
}

bool DataFile::WriteFloat(float p_value)
{
    uint32_t bits;
    std::memcpy(&bits, &p_value, sizeof(bits));
    return WriteUInt32(bits);
}

bool DataFile::WriteDouble(double p_value)
{
    uint64_t bits;
    std::memcpy(&bits, &p_value, sizeof(bits));
    uint8_t bytes[8];
    EncodeLittle(bits, bytes, 8);
    return WriteBytes(bytes, 8);
}

bool DataFile::WriteString(const char* p_text)
{
    if (p_text == nullptr)
    {
        p_text = "";
    }
    const size_t length = std::strlen(p_text);
    if (length > MAX_STRING_LENGTH)
    {
        // The length byte could not say how long it is; a reader would lose its place.
        m_failed = true;
        return false;
    }
    uint8_t buffer[1 + MAX_STRING_LENGTH];
    buffer[0] = static_cast<uint8_t>(length);
    std::memcpy(buffer + 1, p_text, length);
    return WriteBytes(buffer, 1 + length);
}

bool DataFile::WriteString(const std::string& p_text)
{
    if (p_text.find('\0') != std::string::npos)
    {
        // The reader would stop at the NUL: refuse rather than store a different text.
        m_failed = true;
        return false;
    }
    return WriteString(p_text.c_str());
}
