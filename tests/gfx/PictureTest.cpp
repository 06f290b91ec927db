#include "gfx/Image.h"
#include "gfx/Picture.h"

#include <gtest/gtest.h>

#include <string>

TEST(PictureSequenceTest, NumbersCountUpThroughTheThreeDigits)
{
    std::string name = "art\\explosion009.bmp";
    PictureSequence::IncrementNumber(name.data(), name.size());
    EXPECT_EQ("art\\explosion010.bmp", name);
    name = "art\\explosion099.bmp";
    PictureSequence::IncrementNumber(name.data(), name.size());
    EXPECT_EQ("art\\explosion100.bmp", name);
    name = "x998.bmp";
    PictureSequence::IncrementNumber(name.data(), name.size());
    PictureSequence::IncrementNumber(name.data(), name.size());
    EXPECT_EQ("x000.bmp", name);
}

TEST(PictureSequenceTest, LoadsEachNumberedFileInOrder)
{
    PictureSequence sequence;
    ASSERT_TRUE(sequence.Load("art\\ship008.bmp", 4));
    ASSERT_EQ(4, sequence.GetCount());
    EXPECT_EQ("art\\ship008.bmp", sequence.GetPicture(0)->GetImage()->GetFileName());
    EXPECT_EQ("art\\ship009.bmp", sequence.GetPicture(1)->GetImage()->GetFileName());
    EXPECT_EQ("art\\ship011.bmp", sequence.GetPicture(3)->GetImage()->GetFileName());
    EXPECT_EQ(nullptr, sequence.GetPicture(4));

    // A name without the three digits before a four-character extension is refused.
    EXPECT_FALSE(sequence.Load("art\\ship.bmp", 2));
    EXPECT_FALSE(sequence.Load("a1.bmp", 2));
    EXPECT_FALSE(sequence.Load(nullptr, 2));
    EXPECT_EQ(4, sequence.GetCount());

    sequence.Free();
    EXPECT_EQ(0, sequence.GetCount());
    EXPECT_EQ(nullptr, sequence.GetPicture(0));
}

TEST(PictureTest, DrawsOnlyWithAnImage)
{
    Picture picture;
    EXPECT_FALSE(picture.Render());
    EXPECT_FALSE(picture.DrawAt(10, 20));
    EXPECT_TRUE(picture.Update(1.0f));
    picture.LoadImage("art\\missing.bmp");
    EXPECT_NE(nullptr, picture.GetImage());
}
