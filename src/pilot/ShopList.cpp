#include "pilot/ShopList.h"

#include "platform/Paths.h"

#include <cstdio>
#include <memory>

namespace
{
struct FileCloser
{
    void operator()(std::FILE* p_file) const { std::fclose(p_file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

bool ReadByte(std::FILE* p_file, uint8_t& p_value)
{
    return std::fread(&p_value, 1, 1, p_file) == 1;
}

// A length byte and that many characters. A string can never be longer than 255 bytes, so
// nothing the file claims makes the reader allocate more.
bool ReadText(std::FILE* p_file, std::string& p_text)
{
    uint8_t length = 0;
    if (!ReadByte(p_file, length))
    {
        return false;
    }
    std::string text(length, '\0');
    if (length > 0 && std::fread(text.data(), 1, length, p_file) != length)
    {
        return false;
    }
    p_text = std::move(text);
    return true;
}
} // namespace

bool ShopList::Load(const char* p_fileName)
{
    *this = ShopList();
    if (p_fileName == nullptr)
    {
        return false;
    }
    const std::string path = platform::ResolvePath(p_fileName);
    File file(path.empty() ? nullptr : std::fopen(path.c_str(), "rb"));
    if (!file)
    {
        return false;
    }
    if (!ReadText(file.get(), m_title) || !ReadByte(file.get(), m_value1) || !ReadByte(file.get(), m_value2))
    {
        return false;
    }
    for (int kind = 0; kind < NUM_PART_KINDS; ++kind)
    {
        uint8_t count = 0;
        if (!ReadByte(file.get(), count))
        {
            return false;
        }
        for (uint8_t i = 0; i < count; ++i)
        {
            std::string name;
            if (!ReadText(file.get(), name))
            {
                return false;
            }
            m_names[kind].push_back(std::move(name));
            m_counts[kind] = static_cast<int>(m_names[kind].size());
        }
    }
    return true;
}

int ShopList::GetCount(int p_kind) const
{
    return p_kind >= 0 && p_kind < NUM_PART_KINDS ? m_counts[p_kind] : 0;
}

const std::vector<std::string>& ShopList::GetNames(int p_kind) const
{
    static const std::vector<std::string> s_none;
    return p_kind >= 0 && p_kind < NUM_PART_KINDS ? m_names[p_kind] : s_none;
}
