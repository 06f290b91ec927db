#pragma once

#include <vector>

#include "sim/Projectile.h"

// A laser bolt: a beam drawn 2000 units along the shooter's flight, whose shape (a zigzag
// strip 10 wide reaching 800 ahead) hurts for its first quarter second. Then the shape goes
// and the beam fades out, gone after about 0.39 s. The player's beams stay on the player's
// ship and sweep with it.
class LaserBeam : public Projectile
{
public:
    static constexpr double BEAM_LENGTH = 2000.0;
    // The beam hurts until it is this old...
    static constexpr float HURT_TIME = 0.25f;
    // ...and then fades 7 times faster than over one second.
    static constexpr int FADE_RATE = 7;
    // Triangles in the strip of one beam.
    static constexpr int STRIP_TRIANGLES = 40;

    LaserBeam();

    void Launch(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY) override;
    bool Update(float p_dt) override;
    // One line per beam, bright at the ship, half as bright at its far end.
    bool Render() override;

    float GetAge() const { return m_age; }
    int GetAlpha() const { return m_alpha; }
    int GetNumBeams() const { return static_cast<int>(m_beams.size()); }
    // Beam p_index from the position to its far end.
    const Vector2& GetBeam(int p_index) const { return m_beams[static_cast<size_t>(p_index)]; }

    // The strip of one beam turned by p_turn radians: triangles i = 0..39 with k = 2i join
    // (5, -10k), (-5, -10(k + 1)) and (5, -10(k + 2)).
    static void MakeStrip(double p_turn, Triangle* p_triangles);

protected:
    // Beams turned by each of p_turns (radians) from the flight direction.
    explicit LaserBeam(std::vector<double> p_turns);

private:
    // Points every beam along p_shooter's flight (or its heading when it stands still).
    void AimBeams(const PhysicalDesc& p_shooter);

    float m_age = 0.0f;
    int m_alpha = 255;
    std::vector<double> m_turns;
    std::vector<Vector2> m_beams;
    uint16_t m_mountX = 0;
    uint16_t m_mountY = 0;
};

// The Multi-Laser's burst: three beams, the middle one along the flight and one 30 degrees
// to either side. It is not used up by hits: while its shape lasts it hurts every ship it
// overlaps, every frame.
class MultiLaserBurst : public LaserBeam
{
public:
    MultiLaserBurst();
};
