#include "menus/PortraitPicker.h"

#include "gfx/Image.h"
#include "pilot/Pilot.h"
#include "platform/FileSearch.h"
#include "platform/Paths.h"
#include "ui/UiDraw.h"


namespace
{
constexpr const char* LEFT_ARROW_UP = "art\\left_arrow_button_up.bmp";
constexpr const char* LEFT_ARROW_DOWN = "art\\left_arrow_button_down.bmp";
constexpr const char* RIGHT_ARROW_UP = "art\\right_arrow_button_up.bmp";
constexpr const char* RIGHT_ARROW_DOWN = "art\\right_arrow_button_down.bmp";
constexpr const char* CUTOUT_FILE = "art\\portrait_cutout.bmp";
constexpr const char* BORDER_FILE = "art\\portrait_border.bmp";
constexpr uint8_t OPAQUE = 255;

// A picture of the interface, drawn only when its file was there: a missing one would show
// as a white block over the portraits.
void DrawIfLoaded(Image& p_image, int32_t p_x, int32_t p_y, bool p_blend)
{
    if (ui::HasPicture(p_image))
    {
        p_image.Draw(p_x, p_y, 0.0, p_blend);
    }
}

bool Clicked(Button& p_button)
{
    int32_t click = CLICK_NONE;
    p_button.GetClick(&click);
    return click != CLICK_NONE;
}
} // namespace

PortraitPicker::PortraitPicker(Cursor* p_pCursor)
    : InputObject(p_pCursor), m_leftArrow(p_pCursor), m_rightArrow(p_pCursor), m_current(-1)
{
    m_frame.SetScale(FRAME_SCALE);
    m_frame.SetSize(FRAME_WIDTH, FRAME_HEIGHT);
    m_frame.SetColor(FRAME_GREY, FRAME_GREY, FRAME_GREY, OPAQUE);

    m_leftArrow.LoadImagesOrSize(LEFT_ARROW_UP, LEFT_ARROW_DOWN, FALLBACK_ARROW_WIDTH, FALLBACK_ARROW_HEIGHT);
    const int32_t arrowWidth = static_cast<int32_t>(ARROW_WIDTH_SCALE * m_leftArrow.GetWidth());
    const int32_t arrowHeight = static_cast<int32_t>(ARROW_HEIGHT_SCALE * m_leftArrow.GetHeight());
    m_leftArrow.SetSize(arrowWidth, arrowHeight);
    m_rightArrow.LoadImagesOrSize(RIGHT_ARROW_UP, RIGHT_ARROW_DOWN, FALLBACK_ARROW_WIDTH, FALLBACK_ARROW_HEIGHT);
    m_rightArrow.SetSize(arrowWidth, arrowHeight);

    m_pCutout = std::make_unique<Image>();
    m_pCutout->Load(CUTOUT_GREY, CUTOUT_GREY, CUTOUT_GREY, OPAQUE, CUTOUT_FILE);
    m_pCutout->SetSize(CELL_WIDTH, CELL_HEIGHT);
    m_pBorder = std::make_unique<Image>();
    m_pBorder->Load(BORDER_GREY, BORDER_GREY, BORDER_GREY, OPAQUE, BORDER_FILE);
    m_pBorder->SetSize(CELL_WIDTH, CELL_HEIGHT);
    PortraitPicker::SetPosition(0.0f, 0.0f);
}

PortraitPicker::~PortraitPicker() = default;

std::vector<std::string> PortraitPicker::List(const char* p_folder, const char* p_mask)
{
    m_entries.clear();
    m_current = -1;
    const std::string prefix = std::string(p_folder) + "\\";
    std::vector<std::string> files;
    platform::FileSearch search;
    std::string name;
    for (bool found = search.First(prefix + p_mask, name); found; found = search.Next(name))
    {
        files.push_back(prefix + name);
    }
    search.Close();
    return files;
}

void PortraitPicker::AddEntry(const std::string& p_file, std::unique_ptr<Image> p_image)
{
    const int32_t index = static_cast<int32_t>(m_entries.size());
    m_entries.push_back(Entry{std::move(p_image), p_file, index});
    m_current = index;
}

std::unique_ptr<Image> PortraitPicker::LoadPicture(const std::string& p_file)
{
    // Checked before anything is opened: a save may name any path at all.
    if (p_file.empty() || platform::ResolvePath(p_file).empty())
    {
        return nullptr;
    }
    auto image = std::make_unique<Image>();
    image->Load(p_file.c_str());
    if (!ui::HasPicture(*image))
    {
        return nullptr;
    }
    image->SetSize(CELL_WIDTH, CELL_HEIGHT);
    return image;
}

int32_t PortraitPicker::Newer(int32_t p_index) const
{
    const int32_t count = GetNumEntries();
    return p_index + 1 < count ? p_index + 1 : 0;
}

int32_t PortraitPicker::Older(int32_t p_index) const
{
    return p_index > 0 ? p_index - 1 : GetNumEntries() - 1;
}

const PortraitPicker::Entry* PortraitPicker::GetEntry(int32_t p_index) const
{
    if (p_index < 0 || p_index >= GetNumEntries())
    {
        return nullptr;
    }
    return &m_entries[static_cast<size_t>(p_index)];
}

const PortraitPicker::Entry* PortraitPicker::GetCurrentEntry() const
{
    return GetEntry(m_current);
}

const PortraitPicker::Entry* PortraitPicker::GetLeftEntry() const
{
    return HasEntries() ? GetEntry(Newer(m_current)) : nullptr;
}

const PortraitPicker::Entry* PortraitPicker::GetRightEntry() const
{
    return HasEntries() ? GetEntry(Older(m_current)) : nullptr;
}

std::string PortraitPicker::GetFile() const
{
    const Entry* current = GetCurrentEntry();
    return current != nullptr ? current->m_file : std::string();
}

bool PortraitPicker::Update(float p_dt)
{
    m_leftArrow.Update(p_dt);
    m_rightArrow.Update(p_dt);
    const bool left = Clicked(m_leftArrow);
    const bool right = Clicked(m_rightArrow);
    if (HasEntries())
    {
        if (left)
        {
            m_current = Newer(m_current);
        }
        if (right)
        {
            m_current = Older(m_current);
        }
    }
    return true;
}

void PortraitPicker::SetPosition(float p_x, float p_y)
{
    InputObject::SetPosition(p_x, p_y);
    const int32_t arrowWidth = m_leftArrow.GetWidth();
    const float arrowY = p_y + static_cast<float>((FRAME_HEIGHT - m_leftArrow.GetHeight()) / 2);
    m_leftArrow.SetPosition(p_x, arrowY);
    m_frame.SetPosition(p_x + static_cast<float>(arrowWidth + ARROW_GAP), p_y);
    m_rightArrow.SetPosition(p_x + static_cast<float>(arrowWidth + RIGHT_ARROW_OFFSET), arrowY);
}

void PortraitPicker::Move(double p_dx, double p_dy)
{
    SetPosition(static_cast<float>(GetX() + p_dx), static_cast<float>(GetY() + p_dy));
}

int PortraitPicker::GetWidth() const
{
    return m_leftArrow.GetWidth() + RIGHT_ARROW_OFFSET + m_rightArrow.GetWidth();
}

void PortraitPicker::DrawCell(const Entry& p_entry, int32_t p_x, int32_t p_y, bool p_middle)
{
    if (p_entry.m_pImage)
    {
        Image& picture = *p_entry.m_pImage;
        if (p_middle)
        {
            picture.Draw(p_x, p_y, 0.0, false);
        }
        else
        {
            // One picture may fill several cells: it is dimmed only while it is drawn at the side.
            picture.SetAlpha(SIDE_ALPHA);
            picture.Draw(p_x, p_y, 0.0, true);
            picture.SetAlpha(OPAQUE);
        }
    }
    DrawIfLoaded(*m_pCutout, p_x, p_y, true);
    if (p_middle)
    {
        m_pBorder->SetColor(OPAQUE, OPAQUE, OPAQUE, OPAQUE);
        DrawIfLoaded(*m_pBorder, p_x, p_y, true);
        m_pBorder->SetColor(BORDER_GREY, BORDER_GREY, BORDER_GREY, OPAQUE);
    }
    else
    {
        DrawIfLoaded(*m_pBorder, p_x, p_y, true);
    }
}

bool PortraitPicker::Render()
{
    m_frame.Render();
    const Entry* current = GetCurrentEntry();
    if (current != nullptr)
    {
        const int32_t x = ui::Whole(GetX()) + m_leftArrow.GetWidth() + ARROW_GAP + ROW_LEFT;
        const int32_t y = ui::Whole(GetY()) + ROW_TOP;
        const int32_t step = CELL_WIDTH + CELL_GAP;
        DrawCell(*GetLeftEntry(), x, y, false);
        DrawCell(*current, x + step, y, true);
        DrawCell(*GetRightEntry(), x + 2 * step, y, false);
    }
    m_leftArrow.Render();
    m_rightArrow.Render();
    return true;
}

void PortraitList::Scan()
{
    for (const std::string& file : List(FOLDER, MASK))
    {
        AddEntry(file, LoadPicture(file));
    }
}

bool SaveList::ReadPilot(const std::string& p_file, Pilot& p_record)
{
    p_record.SetFileName(p_file.c_str());
    return p_record.Load(nullptr) && p_record.IsWhole();
}

void SaveList::Scan()
{
    for (const std::string& file : List(FOLDER, MASK))
    {
        Pilot record;
        AddEntry(file, ReadPilot(file, record) ? LoadPicture(record.GetPortrait()) : nullptr);
    }
}
