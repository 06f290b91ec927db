// korvath-contactsheet: lays every picture of a game directory out on one PNG, each with its
// name beneath, so that the whole look of the game can be judged in one view.
//
//   korvath-contactsheet GAME_DIR OUT.png [--match TEXT] [--zoom N] [--cell PIXELS] [--width PIXELS] [--png]
//
// --png lays out the PNG files of the folder (screenshots) instead of its bitmaps.
//
// Pictures are shown as the game shows them: pure green (0, 255, 0) is transparent and 32-bit
// pictures keep their alpha, over a checkerboard that makes transparency visible. Large
// pictures are scaled down to fit their cell; with --zoom N, small ones are enlarged up to N
// times (pixels kept sharp) to look at them closely; --cell sets the longest side of a
// thumbnail (160; pictures of 512 pixels or more get twice that). --match keeps only pictures
// whose path contains TEXT (case-insensitive).

#include "platform/BitmapFile.h"

#include <cairo.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace
{

namespace fs = std::filesystem;

constexpr int MIN_CELL_WIDTH = 120;
constexpr int GAP = 14;
constexpr int LABEL_HEIGHT = 26;
constexpr int HEADER_HEIGHT = 34;
constexpr int MAX_SHEET_HEIGHT = 32000; // Cairo's image surfaces stop at 32767

std::string Lower(std::string p_text)
{
    for (char& c : p_text)
        c = char(std::tolower(static_cast<unsigned char>(c)));
    return p_text;
}

struct Entry
{
    std::string name;   // path inside the game directory, with forward slashes
    std::string folder; // its folder, for the section headings
    cairo_surface_t* surface = nullptr;
    int width = 0;
    int height = 0;
    int bits = 0;
    double scale = 1.0;
    int cellWidth = 0;
    int cellHeight = 0;
};

// A PNG file as it is; null when it cannot be read.
cairo_surface_t* LoadPng(const fs::path& p_path, int& p_width, int& p_height, int& p_bits)
{
    cairo_surface_t* surface = cairo_image_surface_create_from_png(p_path.c_str());
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS)
    {
        cairo_surface_destroy(surface);
        return nullptr;
    }
    p_width = cairo_image_surface_get_width(surface);
    p_height = cairo_image_surface_get_height(surface);
    p_bits = 32;
    return surface;
}

// The picture as the game would show it, as a premultiplied Cairo surface.
cairo_surface_t* LoadPicture(const fs::path& p_path, int& p_width, int& p_height, int& p_bits)
{
    platform::DibPixels pixels;
    if (!platform::ReadBitmapFile(p_path.string(), pixels))
        return nullptr;
    const bool topDown = pixels.height < 0;
    const int width = pixels.width;
    const int height = topDown ? -pixels.height : pixels.height;
    const int bytesPerPixel = pixels.bitCount == 32 ? 4 : 3;
    const size_t rowBytes = (size_t(width) * size_t(bytesPerPixel) + 3u) & ~size_t(3);
    if (pixels.bits.size() < rowBytes * size_t(height))
        return nullptr;
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS)
    {
        cairo_surface_destroy(surface);
        return nullptr;
    }
    uint8_t* data = cairo_image_surface_get_data(surface);
    const size_t stride = size_t(cairo_image_surface_get_stride(surface));
    for (int y = 0; y < height; ++y)
    {
        const size_t sourceRow = topDown ? size_t(y) : size_t(height - 1 - y);
        const uint8_t* in = pixels.bits.data() + sourceRow * rowBytes;
        uint8_t* out = data + size_t(y) * stride;
        for (int x = 0; x < width; ++x, in += bytesPerPixel)
        {
            const uint32_t blue = in[0];
            const uint32_t green = in[1];
            const uint32_t red = in[2];
            uint32_t alpha = bytesPerPixel == 4 ? in[3] : 255u;
            if (red == 0 && green == 255 && blue == 0 && alpha == 255)
                alpha = 0; // the colour key
            const uint32_t word = (alpha << 24) | (((red * alpha + 127) / 255) << 16) |
                                  (((green * alpha + 127) / 255) << 8) | ((blue * alpha + 127) / 255);
            std::memcpy(out + size_t(x) * 4, &word, 4);
        }
    }
    cairo_surface_mark_dirty(surface);
    p_width = width;
    p_height = height;
    p_bits = pixels.bitCount;
    return surface;
}

void PrintUsage()
{
    std::fprintf(stderr,
                 "usage: korvath-contactsheet GAME_DIR OUT.png [--match TEXT] [--zoom N] [--cell PIXELS] [--width PIXELS] [--png]\n");
}

void Checkerboard(cairo_t* p_context, double p_x, double p_y, double p_width, double p_height)
{
    cairo_save(p_context);
    cairo_rectangle(p_context, p_x, p_y, p_width, p_height);
    cairo_clip(p_context);
    cairo_set_source_rgb(p_context, 0.2, 0.2, 0.22);
    cairo_paint(p_context);
    cairo_set_source_rgb(p_context, 0.27, 0.27, 0.3);
    const double square = 8.0;
    for (double y = p_y; y < p_y + p_height; y += square)
        for (double x = p_x + (int((y - p_y) / square) % 2) * square; x < p_x + p_width; x += 2.0 * square)
            cairo_rectangle(p_context, x, y, square, square);
    cairo_fill(p_context);
    cairo_restore(p_context);
}

// p_text cut with an ellipsis in front until it fits p_width.
std::string Fit(cairo_t* p_context, const std::string& p_text, double p_width)
{
    cairo_text_extents_t extents;
    cairo_text_extents(p_context, p_text.c_str(), &extents);
    if (extents.x_advance <= p_width)
        return p_text;
    for (size_t cut = 1; cut < p_text.size(); ++cut)
    {
        const std::string shorter = "\xE2\x80\xA6" + p_text.substr(cut);
        cairo_text_extents(p_context, shorter.c_str(), &extents);
        if (extents.x_advance <= p_width)
            return shorter;
    }
    return p_text;
}

} // namespace

int main(int p_argc, char** p_argv)
{
    std::string gameDir;
    std::string outPath;
    std::string match;
    int zoom = 1;
    int sheetWidth = 2400;
    int cell = 160;
    bool png = false;
    for (int i = 1; i < p_argc; ++i)
    {
        const std::string argument = p_argv[i];
        if (argument == "--match" && i + 1 < p_argc)
            match = Lower(p_argv[++i]);
        else if (argument == "--zoom" && i + 1 < p_argc)
            zoom = std::clamp(std::atoi(p_argv[++i]), 1, 16);
        else if (argument == "--cell" && i + 1 < p_argc)
            cell = std::clamp(std::atoi(p_argv[++i]), 32, 2048);
        else if (argument == "--width" && i + 1 < p_argc)
            sheetWidth = std::clamp(std::atoi(p_argv[++i]), 400, 16000);
        else if (argument == "--png")
            png = true;
        else if (argument == "--help" || argument == "-h")
        {
            PrintUsage();
            return 0;
        }
        else if (!argument.empty() && argument[0] != '-' && gameDir.empty())
            gameDir = argument;
        else if (!argument.empty() && argument[0] != '-' && outPath.empty())
            outPath = argument;
        else
        {
            PrintUsage();
            return 2;
        }
    }
    if (gameDir.empty() || outPath.empty())
    {
        PrintUsage();
        return 2;
    }

    std::error_code error;
    std::vector<Entry> entries;
    int unreadable = 0;
    for (fs::recursive_directory_iterator it(gameDir, error), end; !error && it != end; it.increment(error))
    {
        if (!it->is_regular_file(error) || Lower(it->path().extension().string()) != (png ? ".png" : ".bmp"))
            continue;
        Entry entry;
        entry.name = fs::relative(it->path(), gameDir, error).generic_string();
        if (!match.empty() && Lower(entry.name).find(match) == std::string::npos)
            continue;
        entry.folder = fs::path(entry.name).parent_path().generic_string();
        entry.surface = png ? LoadPng(it->path(), entry.width, entry.height, entry.bits)
                            : LoadPicture(it->path(), entry.width, entry.height, entry.bits);
        if (entry.surface == nullptr)
        {
            std::fprintf(stderr, "korvath-contactsheet: %s is not a readable bitmap\n", entry.name.c_str());
            ++unreadable;
            entry.width = entry.height = 64;
        }
        entries.push_back(std::move(entry));
    }
    if (error)
    {
        std::fprintf(stderr, "korvath-contactsheet: cannot read %s: %s\n", gameDir.c_str(), error.message().c_str());
        return 1;
    }
    if (entries.empty())
    {
        std::fprintf(stderr, "korvath-contactsheet: no pictures in %s\n", gameDir.c_str());
        return 1;
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& p_a, const Entry& p_b) {
        return Lower(p_a.folder) != Lower(p_b.folder) ? Lower(p_a.folder) < Lower(p_b.folder)
                                                      : Lower(p_a.name) < Lower(p_b.name);
    });

    // Sizes, then rows: each folder starts a new row under its heading.
    for (Entry& entry : entries)
    {
        const int longest = std::max(entry.width, entry.height);
        const int limit = longest >= 512 ? 2 * cell : cell;
        if (longest > limit)
            entry.scale = double(limit) / longest;
        else
            entry.scale = std::max(1, std::min(zoom, limit / std::max(1, longest)));
        entry.cellWidth = std::max(MIN_CELL_WIDTH, int(std::ceil(entry.width * entry.scale)));
        entry.cellHeight = int(std::ceil(entry.height * entry.scale)) + LABEL_HEIGHT;
    }
    struct Placed
    {
        size_t entry;
        int x;
        int y;
    };
    std::vector<Placed> placed;
    std::vector<std::pair<std::string, int>> headings;
    int y = GAP;
    int x = GAP;
    int rowHeight = 0;
    std::string folder = "\x01";
    for (size_t i = 0; i < entries.size(); ++i)
    {
        const Entry& entry = entries[i];
        if (Lower(entry.folder) != Lower(folder))
        {
            y += rowHeight + (placed.empty() ? 0 : GAP);
            headings.push_back({entry.folder.empty() ? "(game directory)" : entry.folder + "/", y});
            y += HEADER_HEIGHT;
            x = GAP;
            rowHeight = 0;
            folder = entry.folder;
        }
        if (x > GAP && x + entry.cellWidth > sheetWidth - GAP)
        {
            y += rowHeight + GAP;
            x = GAP;
            rowHeight = 0;
        }
        placed.push_back({i, x, y});
        x += entry.cellWidth + GAP;
        rowHeight = std::max(rowHeight, entry.cellHeight);
    }
    const int sheetHeight = y + rowHeight + GAP;
    if (sheetHeight > MAX_SHEET_HEIGHT)
    {
        std::fprintf(stderr,
                     "korvath-contactsheet: %zu pictures need a sheet %d pixels tall, more than %d; use --match or "
                     "a larger --width\n",
                     entries.size(), sheetHeight, MAX_SHEET_HEIGHT);
        for (Entry& entry : entries)
            cairo_surface_destroy(entry.surface);
        return 1;
    }

    cairo_surface_t* sheet = cairo_image_surface_create(CAIRO_FORMAT_RGB24, sheetWidth, sheetHeight);
    cairo_t* cr = cairo_create(sheet);
    cairo_set_source_rgb(cr, 0.1, 0.1, 0.11);
    cairo_paint(cr);
    cairo_select_font_face(cr, "Liberation Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD);
    for (const auto& [title, top] : headings)
    {
        cairo_set_font_size(cr, 18.0);
        cairo_set_source_rgb(cr, 0.95, 0.75, 0.4);
        cairo_move_to(cr, GAP, top + 22.0);
        cairo_show_text(cr, title.c_str());
        cairo_rectangle(cr, GAP, top + 28.0, sheetWidth - 2.0 * GAP, 1.0);
        cairo_fill(cr);
    }
    for (const Placed& place : placed)
    {
        const Entry& entry = entries[place.entry];
        const double drawnWidth = entry.width * entry.scale;
        const double drawnHeight = entry.height * entry.scale;
        const double left = place.x + (entry.cellWidth - drawnWidth) / 2.0;
        Checkerboard(cr, std::floor(left), place.y, std::ceil(drawnWidth), std::ceil(drawnHeight));
        if (entry.surface != nullptr)
        {
            cairo_save(cr);
            cairo_translate(cr, std::floor(left), place.y);
            cairo_scale(cr, entry.scale, entry.scale);
            cairo_set_source_surface(cr, entry.surface, 0.0, 0.0);
            // Enlarged pictures keep their pixels sharp; reduced ones are averaged.
            cairo_pattern_set_filter(cairo_get_source(cr),
                                     entry.scale > 1.0 ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
            cairo_paint(cr);
            cairo_restore(cr);
        }
        else
        {
            cairo_set_source_rgb(cr, 0.8, 0.1, 0.1);
            cairo_set_line_width(cr, 3.0);
            cairo_move_to(cr, left, place.y);
            cairo_line_to(cr, left + drawnWidth, place.y + drawnHeight);
            cairo_move_to(cr, left + drawnWidth, place.y);
            cairo_line_to(cr, left, place.y + drawnHeight);
            cairo_stroke(cr);
        }
        cairo_set_font_size(cr, 11.0);
        cairo_set_source_rgb(cr, 0.9, 0.9, 0.92);
        const std::string label = Fit(cr, fs::path(entry.name).filename().string(), entry.cellWidth);
        cairo_text_extents_t extents;
        cairo_text_extents(cr, label.c_str(), &extents);
        const double labelY = place.y + drawnHeight + 12.0;
        cairo_move_to(cr, place.x + (entry.cellWidth - extents.x_advance) / 2.0, labelY);
        cairo_show_text(cr, label.c_str());
        char size[64];
        if (entry.surface != nullptr)
            std::snprintf(size, sizeof(size), "%d x %d, %d-bit", entry.width, entry.height, entry.bits);
        else
            std::snprintf(size, sizeof(size), "unreadable");
        cairo_set_font_size(cr, 9.5);
        cairo_set_source_rgb(cr, 0.6, 0.62, 0.66);
        cairo_text_extents(cr, size, &extents);
        cairo_move_to(cr, place.x + (entry.cellWidth - extents.x_advance) / 2.0, labelY + 11.0);
        cairo_show_text(cr, size);
    }
    cairo_destroy(cr);
    const cairo_status_t status = cairo_surface_write_to_png(sheet, outPath.c_str());
    cairo_surface_destroy(sheet);
    for (Entry& entry : entries)
        cairo_surface_destroy(entry.surface);
    if (status != CAIRO_STATUS_SUCCESS)
    {
        std::fprintf(stderr, "korvath-contactsheet: cannot write %s: %s\n", outPath.c_str(),
                     cairo_status_to_string(status));
        return 1;
    }
    std::printf("korvath-contactsheet: %zu pictures on %s (%d x %d)%s\n", entries.size(), outPath.c_str(), sheetWidth,
                sheetHeight, unreadable > 0 ? ", some unreadable" : "");
    return unreadable > 0 ? 1 : 0;
}
