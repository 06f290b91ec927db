#pragma once

#include "ui/Button.h"
#include "ui/FramedBox.h"
#include "ui/InputObject.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class Image;
class Pilot;

// A carousel over the files of one folder: a framed strip of three cells with the chosen
// picture in the middle and its two neighbours dimmed beside it, and an arrow button on each
// side. The files are kept in the order the folder lists them; the last one listed is the
// newest and starts as the choice. The left arrow goes to the next newer file (from the
// newest, round to the oldest), the right arrow to the next older one (from the oldest, round
// to the newest). The kinds of picker fill the list in Scan.
class PortraitPicker : public InputObject
{
public:
    static constexpr int32_t FRAME_WIDTH = 450;
    static constexpr int32_t FRAME_HEIGHT = 198;
    static constexpr float FRAME_SCALE = 0.75f;
    static constexpr uint8_t FRAME_GREY = 220;
    // Every picture, the cutout and the border are drawn this size.
    static constexpr int32_t CELL_WIDTH = 125;
    static constexpr int32_t CELL_HEIGHT = 156;
    static constexpr int32_t CELL_GAP = 18;
    // The picture row's place inside the frame.
    static constexpr int32_t ROW_LEFT = 18;
    static constexpr int32_t ROW_TOP = 21;
    // Between the left arrow and the frame.
    static constexpr int32_t ARROW_GAP = 5;
    // The right arrow's distance from the left end of the frame.
    static constexpr int32_t RIGHT_ARROW_OFFSET = 460;
    // The arrows are drawn smaller than their pictures.
    static constexpr double ARROW_WIDTH_SCALE = 0.6;
    static constexpr double ARROW_HEIGHT_SCALE = 0.8;
    // The arrows' size when their pictures are missing, before the scaling, so that they can
    // still be clicked.
    static constexpr int32_t FALLBACK_ARROW_WIDTH = 59;
    static constexpr int32_t FALLBACK_ARROW_HEIGHT = 100;
    // The neighbours' pictures are drawn this faint.
    static constexpr uint8_t SIDE_ALPHA = 75;
    static constexpr uint8_t CUTOUT_GREY = 129;
    static constexpr uint8_t BORDER_GREY = 205;

    // One listed file. Its picture is missing when the file gives none that can be shown.
    struct Entry
    {
        std::unique_ptr<Image> m_pImage;
        std::string m_file;
        int32_t m_index;
    };

    explicit PortraitPicker(Cursor* p_pCursor);
    ~PortraitPicker() override;

    // Fills the list from the folder; the newest file becomes the choice.
    virtual void Scan() = 0;

    // Steps with the arrows' clicks.
    bool Update(float p_dt) override;
    // The frame, the three cells when there is a choice, the arrows.
    bool Render() override;
    // Places the left arrow, the frame and the right arrow from left to right.
    void SetPosition(float p_x, float p_y) override;
    void Move(double p_dx, double p_dy) override;
    // The whole strip, arrows included.
    int GetWidth() const override;
    int GetHeight() const override { return FRAME_HEIGHT; }

    bool HasEntries() const { return !m_entries.empty(); }
    int32_t GetNumEntries() const { return static_cast<int32_t>(m_entries.size()); }
    // The chosen file as the game names it ("Portraits\Ace.bmp"); "" when nothing is listed.
    std::string GetFile() const;
    // The chosen file's place in the listing (the first listed is 0); -1 when nothing is.
    int32_t GetIndex() const { return m_current; }
    // The entries the arrows would choose and the chosen one; null when nothing is listed.
    const Entry* GetLeftEntry() const;
    const Entry* GetCurrentEntry() const;
    const Entry* GetRightEntry() const;
    // Entry p_index of the listing, or null.
    const Entry* GetEntry(int32_t p_index) const;

    const Button& GetLeftArrow() const { return m_leftArrow; }
    const Button& GetRightArrow() const { return m_rightArrow; }
    const FramedBox& GetFrame() const { return m_frame; }

protected:
    // Forgets the list and lists p_folder\p_mask again; answers the files found, each as the
    // game names it, in listing order. Subclasses add an entry for each.
    std::vector<std::string> List(const char* p_folder, const char* p_mask);
    // Adds the next file of the listing with its picture (null for none).
    void AddEntry(const std::string& p_file, std::unique_ptr<Image> p_image);
    // The picture of a file, sized to a cell; null when the name is empty, names a place outside
    // the game directory, or the file gives no picture.
    static std::unique_ptr<Image> LoadPicture(const std::string& p_file);

private:
    int32_t Newer(int32_t p_index) const;
    int32_t Older(int32_t p_index) const;
    void DrawCell(const Entry& p_entry, int32_t p_x, int32_t p_y, bool p_middle);

    FramedBox m_frame;
    Button m_leftArrow;
    Button m_rightArrow;
    std::unique_ptr<Image> m_pCutout;
    std::unique_ptr<Image> m_pBorder;
    // Oldest first: entry i has index i, and the newest is the last.
    std::vector<Entry> m_entries;
    int32_t m_current;
};

// The portraits a new recruit may choose from: every bitmap of "Portraits".
class PortraitList : public PortraitPicker
{
public:
    static constexpr const char* FOLDER = "Portraits";
    static constexpr const char* MASK = "*.bmp";

    explicit PortraitList(Cursor* p_pCursor) : PortraitPicker(p_pCursor) {}

    void Scan() override;
};

// The saved pilots of "Saves", each shown with its own portrait. A save that cannot be read,
// or whose portrait cannot be shown, is listed without a picture.
class SaveList : public PortraitPicker
{
public:
    static constexpr const char* FOLDER = "Saves";
    static constexpr const char* MASK = "*.sav";

    explicit SaveList(Cursor* p_pCursor) : PortraitPicker(p_pCursor) {}

    void Scan() override;

    // Reads the pilot of save p_file into p_record; false when the file does not open or ends
    // before the record does.
    static bool ReadPilot(const std::string& p_file, Pilot& p_record);
};
