#pragma once

// The interface and HUD pictures with the sizes the game's layout is built around. The art
// generator draws them at these sizes and `korvath-forge check` insists on them, so the two
// can never drift apart. Header-only: the forge and the tests include it without the generator.

#include <cstddef>

namespace artgen
{

struct InterfacePicture
{
    const char* gameName;
    int width;
    int height;
    bool alpha; // drawn with an alpha channel (32-bit) rather than opaque or colour-keyed (24-bit)
};

// Push buttons: the hub spaces its buttons 145 apart, the menus 70 apart; "Start Mission"
// in the hub's 14-point caption needs most of the width.
constexpr int BUTTON_WIDTH = 140;
constexpr int BUTTON_HEIGHT = 40;
// The in-game menu's buttons, on the green panel.
constexpr int BUTTON2_WIDTH = 176;
constexpr int BUTTON2_HEIGHT = 40;
// The framed box pieces; FramedBox refuses any other size.
constexpr int BOX_PIECE_SIZE = 32;
// The vertical ribbon behind the menu buttons (x 15 to 151), 1:1 at the logical screen height.
constexpr int RIBBON_WIDTH = 192;
constexpr int RIBBON_HEIGHT = 768;
// The title plate, drawn at x = -80: 240 pixels of it show, past the ribbon.
constexpr int TITLE_PLATE_WIDTH = 320;
constexpr int TITLE_PLATE_HEIGHT = 56;
// The portrait picker draws its arrows at 0.6 x 0.8 of these, in whole pixels: 35 x 80, which
// centres the picker's frame over the pilot menu's name field.
constexpr int SIDE_ARROW_WIDTH = 59;
constexpr int SIDE_ARROW_HEIGHT = 100;
// The shop's scroll arrows.
constexpr int SCROLL_ARROW_WIDTH = 80;
constexpr int SCROLL_ARROW_HEIGHT = 15;
// The green in-game menu panel: "Menu" is printed at y 257 and four buttons 1.5 heights apart
// follow it.
constexpr int GREEN_PANEL_WIDTH = 240;
constexpr int GREEN_PANEL_HEIGHT = 288;
// The radar: its picture's width also places the status panel (x = 1024 - width + 96), so
// 256 puts the 160-wide panel flush with the right edge of the screen.
constexpr int RADAR_WIDTH = 256;
constexpr int RADAR_HEIGHT = 256;
constexpr int RADAR_CENTRE_X = 80;
constexpr int RADAR_CENTRE_Y = 82;
constexpr int RADAR_RIM = 75; // blips further out are pinned to this radius
constexpr int STATUS_WIDTH = 160;
constexpr int STATUS_HEIGHT = 88;
// Victory and defeat banners, placed at (300, 300): centred on the 1024 x 768 screen.
constexpr int BANNER_WIDTH = 424;
constexpr int BANNER_HEIGHT = 168;
constexpr int PORTRAIT_WIDTH = 125;
// The shop's ship picture: the right mount's name is written 220 from its left edge, and the
// widest weapon name needs the rest.
constexpr int SHIP_DISPLAY_WIDTH = 340;
constexpr int SHIP_DISPLAY_HEIGHT = 240;
constexpr int PORTRAIT_HEIGHT = 156;

inline constexpr InterfacePicture INTERFACE_PICTURES[] = {
    {"art\\cursor.bmp", 32, 32, true},
    {"art\\ribbon.bmp", RIBBON_WIDTH, RIBBON_HEIGHT, false},
    {"art\\menu_title_bg.bmp", TITLE_PLATE_WIDTH, TITLE_PLATE_HEIGHT, true},
    {"art\\title.bmp", 650, 325, false},
    {"art\\button_up.bmp", BUTTON_WIDTH, BUTTON_HEIGHT, true},
    {"art\\button_down.bmp", BUTTON_WIDTH, BUTTON_HEIGHT, true},
    {"art\\button_up2.bmp", BUTTON2_WIDTH, BUTTON2_HEIGHT, true},
    {"art\\button_down2.bmp", BUTTON2_WIDTH, BUTTON2_HEIGHT, true},
    {"art\\box_topleft.bmp", BOX_PIECE_SIZE, BOX_PIECE_SIZE, true},
    {"art\\box_topright.bmp", BOX_PIECE_SIZE, BOX_PIECE_SIZE, true},
    {"art\\box_bottomleft.bmp", BOX_PIECE_SIZE, BOX_PIECE_SIZE, true},
    {"art\\box_bottomright.bmp", BOX_PIECE_SIZE, BOX_PIECE_SIZE, true},
    {"art\\box_top.bmp", BOX_PIECE_SIZE, BOX_PIECE_SIZE, true},
    {"art\\box_left.bmp", BOX_PIECE_SIZE, BOX_PIECE_SIZE, true},
    {"art\\box_right.bmp", BOX_PIECE_SIZE, BOX_PIECE_SIZE, true},
    {"art\\box_bottom.bmp", BOX_PIECE_SIZE, BOX_PIECE_SIZE, true},
    {"art\\slider_bg.bmp", 200, 16, false},
    {"art\\slider.bmp", 16, 28, false},
    {"art\\up_arrow_button_up.bmp", SCROLL_ARROW_WIDTH, SCROLL_ARROW_HEIGHT, true},
    {"art\\up_arrow_button_down.bmp", SCROLL_ARROW_WIDTH, SCROLL_ARROW_HEIGHT, true},
    {"art\\down_arrow_button_up.bmp", SCROLL_ARROW_WIDTH, SCROLL_ARROW_HEIGHT, true},
    {"art\\down_arrow_button_down.bmp", SCROLL_ARROW_WIDTH, SCROLL_ARROW_HEIGHT, true},
    {"art\\left_arrow_button_up.bmp", SIDE_ARROW_WIDTH, SIDE_ARROW_HEIGHT, true},
    {"art\\left_arrow_button_down.bmp", SIDE_ARROW_WIDTH, SIDE_ARROW_HEIGHT, true},
    {"art\\right_arrow_button_up.bmp", SIDE_ARROW_WIDTH, SIDE_ARROW_HEIGHT, true},
    {"art\\right_arrow_button_down.bmp", SIDE_ARROW_WIDTH, SIDE_ARROW_HEIGHT, true},
    {"art\\portrait_cutout.bmp", PORTRAIT_WIDTH, PORTRAIT_HEIGHT, true},
    {"art\\portrait_border.bmp", PORTRAIT_WIDTH, PORTRAIT_HEIGHT, true},
    {"Art\\check.bmp", 20, 20, true},
    {"art\\menugreenbg.bmp", GREEN_PANEL_WIDTH, GREEN_PANEL_HEIGHT, true},
    {"art\\planets.bmp", 1024, 768, false},
    {"art\\menu\\ship_display.bmp", SHIP_DISPLAY_WIDTH, SHIP_DISPLAY_HEIGHT, true},
    {"art\\menu\\shield.bmp", 128, 128, true},
    {"art\\victorybanner.bmp", BANNER_WIDTH, BANNER_HEIGHT, true},
    {"art\\defeatbanner.bmp", BANNER_WIDTH, BANNER_HEIGHT, true},
    {"art\\hudradar.bmp", RADAR_WIDTH, RADAR_HEIGHT, true},
    {"art\\hudstats.bmp", STATUS_WIDTH, STATUS_HEIGHT, true},
    {"art\\hud_customize_screenshot.bmp", 300, 225, false},
    {"art\\hud_customize_radar.bmp", 75, 56, true},
    {"art\\hud_customize_status.bmp", 75, 56, true},
    {"art\\hud_customize_comm.bmp", 75, 56, true},
    {"art\\menu\\corvel_logo.bmp", 1024, 768, false},
    {"art\\menu\\brask_productions.bmp", 1024, 768, false},
    {"art\\credits\\credits1.bmp", 1024, 768, false},
    {"art\\credits\\credits2.bmp", 1024, 768, false},
    {"art\\credits\\credits3.bmp", 1024, 768, false},
};

// Pictures a button shows in its two states: Button::LoadImages asserts that they match.
inline constexpr const char* BUTTON_PAIRS[][2] = {
    {"art\\button_up.bmp", "art\\button_down.bmp"},
    {"art\\button_up2.bmp", "art\\button_down2.bmp"},
    {"art\\up_arrow_button_up.bmp", "art\\up_arrow_button_down.bmp"},
    {"art\\down_arrow_button_up.bmp", "art\\down_arrow_button_down.bmp"},
    {"art\\left_arrow_button_up.bmp", "art\\left_arrow_button_down.bmp"},
    {"art\\right_arrow_button_up.bmp", "art\\right_arrow_button_down.bmp"},
};

// The portrait picker lists every bitmap of this folder; the pilot menu offers at least this
// many faces.
constexpr const char* PORTRAIT_FOLDER = "Portraits";
constexpr size_t MIN_PORTRAITS = 8;

// Looks a picture up by its game name (exact spelling); null when it is not in the table.
inline const InterfacePicture* FindInterfacePicture(const char* p_gameName)
{
    for (const InterfacePicture& picture : INTERFACE_PICTURES)
    {
        const char* a = picture.gameName;
        const char* b = p_gameName;
        while (*a != '\0' && *a == *b)
        {
            ++a;
            ++b;
        }
        if (*a == *b)
            return &picture;
    }
    return nullptr;
}

} // namespace artgen
