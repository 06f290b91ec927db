#include "pilot/DataFile.h"
#include "support/TestBitmaps.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

namespace
{

namespace fs = std::filesystem;

// DataFile names are relative to the game directory, so each test works in a folder of its own.
class DataFileTest : public testsupport::WorkDirTest
{
protected:
    static std::vector<uint8_t> Bytes(const std::string& p_path)
    {
        std::ifstream file(p_path, std::ios::binary);
        return std::vector<uint8_t>(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

    static void Put(const std::string& p_path, const std::vector<uint8_t>& p_bytes)
    {
        ASSERT_TRUE(testsupport::WriteFileBytes(p_path, p_bytes));
    }

};

TEST_F(DataFileTest, NumbersAreLittleEndianWithoutPaddingAndReadBack)
{
    DataFile out;
    ASSERT_TRUE(out.Open("numbers.bin", "wb"));
    EXPECT_TRUE(out.WriteUInt8(0xAB));
    EXPECT_TRUE(out.WriteInt8(-2));
    EXPECT_TRUE(out.WriteUInt16(0x1234));
    EXPECT_TRUE(out.WriteInt16(-300));
    EXPECT_TRUE(out.WriteInt32(-123456789));
    EXPECT_TRUE(out.WriteUInt32(0xDEADBEEF));
    EXPECT_TRUE(out.WriteLong(0x01020304));
    EXPECT_TRUE(out.WriteFloat(1.5f));
    EXPECT_TRUE(out.WriteDouble(-2.25));
    EXPECT_TRUE(out.Close());
    EXPECT_FALSE(out.HasFailed());

    const std::vector<uint8_t> expected = {
        0xAB,                                           // uint8
        0xFE,                                           // int8 -2
        0x34, 0x12,                                     // uint16
        0xD4, 0xFE,                                     // int16 -300
        0xEB, 0x32, 0xA4, 0xF8,                         // int32 -123456789
        0xEF, 0xBE, 0xAD, 0xDE,                         // uint32
        0x04, 0x03, 0x02, 0x01,                         // long: 4 bytes, not 8
        0x00, 0x00, 0xC0, 0x3F,                         // float 1.5
        0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x02, 0xC0, // double -2.25
    };
    EXPECT_EQ(Bytes("numbers.bin"), expected);

    DataFile in;
    ASSERT_TRUE(in.Open("numbers.bin", "rb"));
    EXPECT_EQ(in.ReadUInt8(), 0xAB);
    EXPECT_EQ(in.ReadInt8(), -2);
    EXPECT_EQ(in.ReadUInt16(), 0x1234);
    EXPECT_EQ(in.ReadInt16(), -300);
    EXPECT_EQ(in.ReadInt32(), -123456789);
    EXPECT_EQ(in.ReadUInt32(), 0xDEADBEEFu);
    EXPECT_EQ(in.ReadLong(), 0x01020304);
    EXPECT_EQ(in.ReadFloat(), 1.5f);
    EXPECT_EQ(in.ReadDouble(), -2.25);
    EXPECT_FALSE(in.HasReadPastEnd());
    EXPECT_EQ(in.ReadUInt8(), 0); // at the end now
    EXPECT_TRUE(in.HasReadPastEnd());
    in.Close();
}

TEST_F(DataFileTest, StringsCarryOneLengthByteAndRefuseWhatItCannotHold)
{
    const std::string longest(255, 'x');
    DataFile out;
    ASSERT_TRUE(out.Open("strings.bin", "wb"));
    EXPECT_TRUE(out.WriteString(""));
    EXPECT_TRUE(out.WriteString("Hi"));
    EXPECT_TRUE(out.WriteString(longest));
    out.Close();

    std::vector<uint8_t> expected = {0x00, 0x02, 'H', 'i', 0xFF};
    expected.insert(expected.end(), 255, 'x');
    const std::vector<uint8_t> written = Bytes("strings.bin");
    EXPECT_EQ(written.size(), 1u + 3u + 256u); // the 255-character string takes 256 bytes
    EXPECT_EQ(written, expected);

    DataFile in;
    ASSERT_TRUE(in.Open("strings.bin", "rb"));
    EXPECT_STREQ(in.ReadString(), "");
    EXPECT_STREQ(in.ReadString(), "Hi");
    EXPECT_EQ(std::string(in.ReadString()), longest);
    EXPECT_FALSE(in.HasReadPastEnd());
    in.Close();

    // 256 characters cannot be stored: nothing is written (a cut string or a wrapped length
    // byte would shift every field after it), and the file being written is not kept.
    Put("kept.bin", {1, 2, 3});
    DataFile refused;
    ASSERT_TRUE(refused.Open("kept.bin", "wb"));
    EXPECT_TRUE(refused.WriteUInt8(7));
    EXPECT_FALSE(refused.WriteString(std::string(256, 'y')));
    EXPECT_FALSE(refused.WriteString(std::string("a\0b", 3))); // would read back as "a"
    EXPECT_TRUE(refused.HasFailed());
    refused.Close();
    EXPECT_TRUE(refused.HasFailed());
    EXPECT_EQ(Bytes("kept.bin"), (std::vector<uint8_t>{1, 2, 3}));
}

TEST_F(DataFileTest, TheStringBufferIsReplacedByTheNextRead)
{
    Put("two.bin", {5, 'f', 'i', 'r', 's', 't', 3, 'n', 'e', 'w', 'a', 'b', 'c'});
    DataFile in;
    ASSERT_TRUE(in.Open("two.bin", "rb"));
    const std::string kept = in.ReadString(); // a caller that keeps the text copies it at once
    EXPECT_EQ(in.GetLastString(), "first");
    const char* second = in.ReadString();
    EXPECT_STREQ(second, "new");
    EXPECT_EQ(in.GetLastString(), "new");
    EXPECT_EQ(kept, "first");
    // A fixed string has no length byte and replaces the buffer the same way.
    EXPECT_STREQ(in.ReadFixedString(3), "abc");
    EXPECT_EQ(in.GetLastString(), "abc");
    in.Close();
}

TEST_F(DataFileTest, ReadsPastTheEndAnswerZeroAndStayThere)
{
    Put("one.bin", {0x7F});
    DataFile in;
    ASSERT_TRUE(in.Open("one.bin", "rb"));
    EXPECT_EQ(in.ReadUInt16(), 0); // one byte left: the 2-byte read fails whole
    EXPECT_TRUE(in.HasReadPastEnd());
    EXPECT_EQ(in.Tell(), 1);
    EXPECT_EQ(in.ReadUInt8(), 0); // the byte was consumed by the short read
    EXPECT_EQ(in.ReadInt32(), 0);
    EXPECT_EQ(in.ReadFloat(), 0.0f);
    EXPECT_EQ(in.ReadDouble(), 0.0);
    EXPECT_STREQ(in.ReadString(), "");
    EXPECT_STREQ(in.ReadFixedString(4), "");
    EXPECT_EQ(in.Tell(), 1);
    in.Close();

    // A length byte that promises more characters than the file holds gives "".
    Put("short.bin", {10, 'a', 'b'});
    ASSERT_TRUE(in.Open("short.bin", "rb"));
    EXPECT_STREQ(in.ReadString(), "");
    EXPECT_TRUE(in.HasReadPastEnd());
    EXPECT_EQ(in.Tell(), 3);
    in.Close();

    // Seeking back clears nothing but the position: the earlier values read again.
    Put("seek.bin", {1, 0, 2, 0, 3, 0});
    ASSERT_TRUE(in.Open("seek.bin", "rb"));
    EXPECT_TRUE(in.Seek(DataFile::ORIGIN_END, -2));
    EXPECT_EQ(in.ReadUInt16(), 3);
    EXPECT_TRUE(in.Seek(DataFile::ORIGIN_START, 2));
    EXPECT_EQ(in.ReadUInt16(), 2);
    EXPECT_TRUE(in.Seek(DataFile::ORIGIN_CURRENT, -4));
    EXPECT_EQ(in.ReadUInt16(), 1);
    EXPECT_FALSE(in.Seek(12345, 0)); // not an origin
    in.Close();
    EXPECT_FALSE(in.Seek(DataFile::ORIGIN_START, 0)); // closed
}

TEST_F(DataFileTest, OpenResolvesGameNamesAndRefusesWhatIsOutside)
{
    std::error_code ec;
    fs::create_directories("GOB/Parts", ec);
    Put("GOB/Parts/hull000.hul", {3, 'a', 'b', 'c'});

    DataFile in;
    EXPECT_TRUE(in.Open("gob\\parts\\HULL000.hul", "rb")); // separators and case as on Windows
    EXPECT_EQ(in.GetFileName(), "gob\\parts\\HULL000.hul");
    EXPECT_EQ(in.GetMode(), "rb");
    EXPECT_STREQ(in.ReadString(), "abc");
    EXPECT_TRUE(in.Close());
    EXPECT_TRUE(in.Close()); // closing twice is harmless

    EXPECT_FALSE(in.Open("missing.bin", "rb"));
    EXPECT_FALSE(in.IsOpen());
    EXPECT_FALSE(in.Open("GOB", "rb"));                  // a folder
    EXPECT_FALSE(in.Open("../outside.bin", "wb"));       // out of the game directory
    EXPECT_FALSE(in.Open((m_dir + "/abs.bin").c_str(), "wb")); // absolute
    EXPECT_FALSE(in.Open("nofolder/new.bin", "wb"));
    EXPECT_FALSE(in.Open(nullptr, "rb"));
    EXPECT_FALSE(in.Open("GOB/Parts/hull000.hul", nullptr));
    EXPECT_FALSE(fs::exists(fs::path(m_dir).parent_path() / "outside.bin"));
    // Reading and writing without an open file do nothing.
    EXPECT_EQ(in.ReadUInt32(), 0u);
    EXPECT_FALSE(in.WriteUInt8(1));
}

TEST_F(DataFileTest, AWriteReplacesTheFileOnlyWhenClosed)
{
    Put("pilot.sav", {9, 9, 9});
    {
        DataFile out;
        ASSERT_TRUE(out.Open("pilot.sav", "wb"));
        out.WriteUInt32(42);
        EXPECT_EQ(Bytes("pilot.sav"), (std::vector<uint8_t>{9, 9, 9})); // still the old save
        out.Close();
        EXPECT_FALSE(out.HasFailed());
    }
    EXPECT_EQ(Bytes("pilot.sav"), (std::vector<uint8_t>{42, 0, 0, 0}));

    {
        // Never closed (an early return, a crash of the caller's logic): the old file stays.
        DataFile abandoned;
        ASSERT_TRUE(abandoned.Open("pilot.sav", "wb"));
        abandoned.WriteUInt32(7);
    }
    EXPECT_EQ(Bytes("pilot.sav"), (std::vector<uint8_t>{42, 0, 0, 0}));
    size_t files = 0;
    for (const auto& entry : fs::directory_iterator(m_dir))
    {
        (void)entry;
        ++files;
    }
    EXPECT_EQ(files, 1u); // no temporary file left behind

    // Opening again closes the file open before.
    DataFile reused;
    ASSERT_TRUE(reused.Open("a.bin", "wb"));
    reused.WriteUInt8(1);
    ASSERT_TRUE(reused.Open("pilot.sav", "rb"));
    EXPECT_EQ(Bytes("a.bin"), (std::vector<uint8_t>{1}));
    EXPECT_EQ(reused.ReadUInt32(), 42u);
}

} // namespace
