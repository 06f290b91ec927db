#pragma once

#include "ShipPainter.h"

#include <string>

namespace artgen
{

// One kind of ship: its picture size and how to draw it, facing up, centred on the canvas.
struct ShipDesign
{
    const char* key; // the last part of the hull base name, e.g. "cargo"
    int width;
    int height;
    Faction faction;
    bool banks; // false for things that never turn (the hive): lean frames repeat the still
    double scale;  // the drawing's layout on the canvas (ShipPainter::SetLayout), leaving
    double shiftY; // room below the engines for the long flame
    void (*draw)(ShipPainter& p_painter);
};

// The design for a base name's last component, or null when there is none.
const ShipDesign* FindShipDesign(const std::string& p_key);

// A plain fighter for a hull the designs do not know (a modder's new ship), drawn to fill a
// canvas of any size.
void DrawGenericShip(ShipPainter& p_painter);

} // namespace artgen
