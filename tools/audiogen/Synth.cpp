#include "Synth.h"

#include <algorithm>
#include <cmath>

namespace audiogen
{

namespace
{

constexpr double PI = 3.14159265358979323846;
constexpr double DT = 1.0 / SAMPLE_RATE;

// Deterministic white noise (xorshift64*), so every build makes the same files.
class Noise
{
public:
    explicit Noise(uint64_t p_seed) : m_state(p_seed | 1u) {}
    double White()
    {
        m_state ^= m_state >> 12;
        m_state ^= m_state << 25;
        m_state ^= m_state >> 27;
        const uint64_t value = m_state * 2685821657736338717ull;
        return double(value >> 11) * (2.0 / 9007199254740992.0) - 1.0;
    }
    double Uniform() { return 0.5 + 0.5 * White(); }

private:
    uint64_t m_state;
};

// A second-order filter after Robert Bristow-Johnson's cookbook; the coefficients may be
// changed while it runs for sweeps.
class Biquad
{
public:
    void LowPass(double p_frequency, double p_q) { Set(p_frequency, p_q, Kind::Low); }
    void HighPass(double p_frequency, double p_q) { Set(p_frequency, p_q, Kind::High); }
    void BandPass(double p_frequency, double p_q) { Set(p_frequency, p_q, Kind::Band); }
    double Run(double p_in)
    {
        const double out = m_b0 * p_in + m_z1;
        m_z1 = m_b1 * p_in - m_a1 * out + m_z2;
        m_z2 = m_b2 * p_in - m_a2 * out;
        return out;
    }

private:
    enum class Kind
    {
        Low,
        High,
        Band
    };
    void Set(double p_frequency, double p_q, Kind p_kind)
    {
        const double frequency = std::clamp(p_frequency, 10.0, SAMPLE_RATE * 0.45);
        const double w = 2.0 * PI * frequency / SAMPLE_RATE;
        const double alpha = std::sin(w) / (2.0 * p_q);
        const double c = std::cos(w);
        const double a0 = 1.0 + alpha;
        switch (p_kind)
        {
        case Kind::Low:
            m_b0 = (1.0 - c) / 2.0 / a0;
            m_b1 = (1.0 - c) / a0;
            m_b2 = m_b0;
            break;
        case Kind::High:
            m_b0 = (1.0 + c) / 2.0 / a0;
            m_b1 = -(1.0 + c) / a0;
            m_b2 = m_b0;
            break;
        case Kind::Band:
            m_b0 = alpha / a0;
            m_b1 = 0.0;
            m_b2 = -alpha / a0;
            break;
        }
        m_a1 = -2.0 * c / a0;
        m_a2 = (1.0 - alpha) / a0;
    }
    double m_b0 = 1.0, m_b1 = 0.0, m_b2 = 0.0, m_a1 = 0.0, m_a2 = 0.0;
    double m_z1 = 0.0, m_z2 = 0.0;
};

// One-pole smoothing: a gentle low-pass (and, subtracted from the input, a high-pass).
class OnePole
{
public:
    explicit OnePole(double p_frequency) : m_k(1.0 - std::exp(-2.0 * PI * p_frequency / SAMPLE_RATE)) {}
    double Low(double p_in)
    {
        m_state += m_k * (p_in - m_state);
        return m_state;
    }
    double High(double p_in) { return p_in - Low(p_in); }

private:
    double m_k;
    double m_state = 0.0;
};

// A band-limited sawtooth (polyBLEP smooths the jump, so high notes do not alias into hiss).
class Saw
{
public:
    double Next(double p_frequency)
    {
        const double step = p_frequency * DT;
        m_phase += step;
        if (m_phase >= 1.0)
            m_phase -= 1.0;
        double value = 2.0 * m_phase - 1.0;
        if (m_phase < step)
        {
            const double t = m_phase / step;
            value -= t + t - t * t - 1.0;
        }
        else if (m_phase > 1.0 - step)
        {
            const double t = (m_phase - 1.0) / step;
            value -= t * t + t + t + 1.0;
        }
        return value;
    }
    void SetPhase(double p_phase) { m_phase = p_phase; }

private:
    double m_phase = 0.0;
};

class Sine
{
public:
    double Next(double p_frequency)
    {
        m_phase += 2.0 * PI * p_frequency * DT;
        if (m_phase > 2.0 * PI)
            m_phase -= 2.0 * PI;
        return std::sin(m_phase);
    }

private:
    double m_phase = 0.0;
};

double Decay(double p_time, double p_tau)
{
    return std::exp(-p_time / p_tau);
}

// 0 to 1 over p_attack seconds.
double Attack(double p_time, double p_attack)
{
    return p_time >= p_attack ? 1.0 : p_time / p_attack;
}

// Warm saturation that keeps small signals as they are.
double Saturate(double p_in, double p_drive)
{
    return std::tanh(p_in * p_drive) / std::tanh(p_drive);
}

size_t Length(double p_seconds)
{
    return size_t(p_seconds * SAMPLE_RATE);
}

// Vibrato comes in after the attack, as a player would let it.
double VibratoDepth(double p_time)
{
    const double t = std::clamp((p_time - 0.18) / 0.25, 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

// One brass note of the fanfare: three detuned saws and a soft sub-octave through a filter
// that opens on the attack (the "blat" of a horn) and a late vibrato.
void AddBrass(Samples& p_out, double p_start, double p_length, double p_frequency, double p_velocity)
{
    const double release = 0.16;
    const size_t first = Length(p_start);
    const size_t count = Length(p_length + release);
    Saw saws[3];
    saws[1].SetPhase(0.33);
    saws[2].SetPhase(0.67);
    Sine sub;
    Biquad filter;
    for (size_t i = 0; i < count && first + i < p_out.size(); ++i)
    {
        const double t = double(i) * DT;
        const double vibrato = 1.0 + 0.0045 * std::sin(2.0 * PI * 5.6 * t) * VibratoDepth(t);
        const double f = p_frequency * vibrato;
        const double tone = saws[0].Next(f) + saws[1].Next(f * 1.0041) + saws[2].Next(f * 0.9962) + 0.6 * sub.Next(f * 0.5);
        const double brightness = 700.0 + p_velocity * (3200.0 * Decay(t, 0.07) + 1500.0);
        if (i % 16 == 0)
            filter.LowPass(brightness, 0.9);
        double envelope = Attack(t, 0.025) * (0.8 + 0.2 * Decay(t, 0.12));
        if (t > p_length)
            envelope *= Decay(t - p_length, release / 4.0);
        p_out[first + i] += float(filter.Run(tone) * envelope * p_velocity * 0.16);
    }
}

} // namespace

// ---- effects -------------------------------------------------------------------------------

// A machine-gun round: a sharp crack, a short burst of bright noise and a low thump.
Samples MakeShoot()
{
    Samples out(Length(0.24));
    Noise noise(0x5110u);
    Biquad crackFilter;
    crackFilter.HighPass(2200.0, 0.7);
    Biquad bodyFilter;
    Biquad tailFilter;
    tailFilter.LowPass(3200.0, 0.7);
    Sine thump;
    for (size_t i = 0; i < out.size(); ++i)
    {
        const double t = double(i) * DT;
        const double white = noise.White();
        const double crack = crackFilter.Run(white) * Decay(t, 0.0018);
        if (i % 8 == 0)
            bodyFilter.BandPass(520.0 + 1600.0 * Decay(t, 0.04), 1.1);
        const double body = bodyFilter.Run(white) * Decay(t, 0.032) * Attack(t, 0.0008);
        const double low = thump.Next(48.0 + 120.0 * Decay(t, 0.022)) * Decay(t, 0.05) * Attack(t, 0.001);
        const double tail = tailFilter.Run(white) * Decay(t, 0.085) * 0.22;
        out[i] = float(Saturate(1.1 * crack + 2.4 * body + 0.95 * low + tail, 2.0));
    }
    Finish(out);
    return out;
}

// A blast with body: a crack, roaring noise whose brightness falls away, a deep rumble, a
// sub-bass thump and a few crackles in the tail.
Samples MakeExplosion()
{
    Samples out(Length(2.0));
    Noise noise(0xB00Bu);
    Biquad crackFilter;
    crackFilter.HighPass(1500.0, 0.7);
    Biquad roarFilter;
    OnePole rumbleFilter(70.0);
    OnePole rumbleFilter2(70.0);
    Biquad crackleFilter;
    crackleFilter.BandPass(2600.0, 2.0);
    Sine thump;
    double crackle = 0.0;
    for (size_t i = 0; i < out.size(); ++i)
    {
        const double t = double(i) * DT;
        const double white = noise.White();
        const double crack = crackFilter.Run(white) * Decay(t, 0.008);
        if (i % 16 == 0)
            roarFilter.LowPass(140.0 + 4200.0 * Decay(t, 0.22), 0.8);
        const double roar = roarFilter.Run(white) * Attack(t, 0.004) * Decay(t, 0.48);
        const double rumble = rumbleFilter2.Low(rumbleFilter.Low(white)) * 9.0 * Attack(t, 0.03) * Decay(t, 0.75);
        const double low = thump.Next(28.0 + 50.0 * Decay(t, 0.12)) * Attack(t, 0.002) * Decay(t, 0.3);
        // sparse pops, most of them early
        if (noise.Uniform() < 0.0025 * Decay(t, 0.5) && t > 0.05)
            crackle = noise.White() * 0.9;
        crackle *= 0.985;
        const double pops = crackleFilter.Run(crackle);
        out[i] = float(Saturate(0.9 * crack + 1.5 * roar + 1.2 * rumble + 0.9 * low + 0.6 * pops, 1.6));
    }
    Finish(out);
    return out;
}

// A short brass fanfare in C: three quick pickups, a rising call and a held major chord over a
// timpani stroke and a cymbal.
Samples MakeVictory()
{
    Samples out(Length(3.1));
    const auto note = [](int p_midi) { return 440.0 * std::pow(2.0, (p_midi - 69) / 12.0); };
    struct Call
    {
        double start;
        double length;
        int key;
        double velocity;
    };
    static const Call CALLS[] = {{0.00, 0.11, 67, 1.0},  {0.15, 0.11, 67, 1.0},  {0.30, 0.11, 67, 1.0},
                                 {0.45, 0.38, 72, 1.0},  {0.90, 0.11, 67, 0.95}, {1.05, 0.12, 72, 0.95},
                                 {1.20, 0.12, 76, 1.0},  {1.35, 1.30, 79, 0.9},  {1.35, 1.30, 72, 0.6},
                                 {1.35, 1.30, 64, 0.55}, {1.35, 1.30, 60, 0.5},  {1.35, 1.30, 48, 0.45}};
    for (const Call& call : CALLS)
        AddBrass(out, call.start, call.length, note(call.key), call.velocity);

    // Timpani on the long notes and a cymbal on the last chord.
    Noise noise(0xFA4Eu);
    Biquad cymbalFilter;
    cymbalFilter.HighPass(5500.0, 0.7);
    for (const double start : {0.45, 1.35})
    {
        Sine drum;
        Biquad skin;
        skin.LowPass(600.0, 0.7);
        const double pitch = start < 1.0 ? note(43) : note(48);
        for (size_t i = 0; i < Length(1.4) && Length(start) + i < out.size(); ++i)
        {
            const double t = double(i) * DT;
            const double tone = drum.Next(pitch * (1.0 + 0.25 * Decay(t, 0.02))) * Decay(t, 0.45);
            const double hit = skin.Run(noise.White()) * Decay(t, 0.03);
            out[Length(start) + i] += float((tone * 0.3 + hit * 0.35) * Attack(t, 0.002));
        }
    }
    for (size_t i = 0; i < Length(1.7) && Length(1.35) + i < out.size(); ++i)
    {
        const double t = double(i) * DT;
        out[Length(1.35) + i] += float(cymbalFilter.Run(noise.White()) * Decay(t, 0.5) * Attack(t, 0.003) * 0.15);
    }
    for (float& sample : out)
        sample = float(Saturate(sample, 1.2));
    Finish(out);
    return out;
}

// A laser zap: a resonant, filtered sawtooth diving from a high whine to a low buzz, a sub
// sine under it and a brief sizzle on the attack.
Samples MakeLaserShot()
{
    Samples out(Length(0.36));
    Noise noise(0x1A5Eu);
    Saw saw;
    Saw saw2;
    saw2.SetPhase(0.5);
    Sine sub;
    Biquad filter;
    Biquad sizzleFilter;
    sizzleFilter.HighPass(4000.0, 0.7);
    for (size_t i = 0; i < out.size(); ++i)
    {
        const double t = double(i) * DT;
        const double pitch = (170.0 + 2300.0 * Decay(t, 0.055)) * (1.0 + 0.025 * std::sin(2.0 * PI * 42.0 * t));
        const double tone = saw.Next(pitch) + 0.6 * saw2.Next(pitch * 1.503);
        if (i % 8 == 0)
            filter.LowPass(500.0 + 7000.0 * Decay(t, 0.07), 5.0);
        const double envelope = Attack(t, 0.002) * Decay(t, 0.11);
        const double sizzle = sizzleFilter.Run(noise.White()) * Decay(t, 0.025) * 0.35;
        const double low = sub.Next(pitch * 0.5) * 0.45 * envelope;
        out[i] = float(Saturate((filter.Run(tone) * 0.5 * envelope + low + sizzle), 1.5));
    }
    Finish(out);
    return out;
}

const std::vector<Effect>& Effects()
{
    static const std::vector<Effect> s_effects = {{"Sound\\shoot.wav", MakeShoot},
                                                  {"Sound\\explosion.wav", MakeExplosion},
                                                  {"Sound\\victory.wav", MakeVictory},
                                                  {"Sound\\laser_shot.wav", MakeLaserShot}};
    return s_effects;
}

// ---- measuring and finishing ---------------------------------------------------------------

Levels Measure(const Samples& p_samples)
{
    Levels levels;
    if (p_samples.empty())
        return levels;
    levels.seconds = double(p_samples.size()) / SAMPLE_RATE;
    double sum = 0.0;
    for (float sample : p_samples)
    {
        levels.peak = std::max(levels.peak, double(std::fabs(sample)));
        sum += sample;
    }
    levels.mean = sum / double(p_samples.size());
    const size_t edge = std::min(p_samples.size(), size_t(START_SAMPLES));
    for (size_t i = 0; i < edge; ++i)
    {
        levels.startLevel = std::max(levels.startLevel, double(std::fabs(p_samples[i])));
        levels.endLevel = std::max(levels.endLevel, double(std::fabs(p_samples[p_samples.size() - 1 - i])));
    }
    // Loudness: the loudest 50 ms, with the lowest rumble weighed less (as ears do).
    OnePole lowCut(100.0);
    std::vector<double> energy(p_samples.size());
    for (size_t i = 0; i < p_samples.size(); ++i)
    {
        const double value = lowCut.High(p_samples[i]);
        energy[i] = value * value;
    }
    const size_t window = std::min(p_samples.size(), size_t(SAMPLE_RATE / 20));
    double running = 0.0;
    double loudest = 0.0;
    for (size_t i = 0; i < energy.size(); ++i)
    {
        running += energy[i];
        if (i >= window)
            running -= energy[i - window];
        if (i + 1 >= window)
            loudest = std::max(loudest, running / double(window));
    }
    levels.loudness = 10.0 * std::log10(std::max(loudest, 1e-12));
    return levels;
}

void Finish(Samples& p_samples)
{
    if (p_samples.empty())
        return;
    // No offset: a gentle high-pass, then whatever mean is left.
    OnePole dcBlock(15.0);
    double sum = 0.0;
    for (float& sample : p_samples)
    {
        sample = float(dcBlock.High(sample));
        sum += sample;
    }
    const float mean = float(sum / double(p_samples.size()));
    for (float& sample : p_samples)
        sample -= mean;
    // Silent ends: a 2 ms fade in and a 12 ms fade out, so nothing clicks.
    const size_t fadeIn = std::min(p_samples.size(), size_t(SAMPLE_RATE / 500));
    const size_t fadeOut = std::min(p_samples.size(), size_t(SAMPLE_RATE * 12 / 1000));
    for (size_t i = 0; i < fadeIn; ++i)
        p_samples[i] *= float(double(i) / double(fadeIn));
    for (size_t i = 0; i < fadeOut; ++i)
    {
        const double t = double(i) / double(fadeOut);
        p_samples[p_samples.size() - 1 - i] *= float(0.5 - 0.5 * std::cos(PI * t));
    }
    // One loudness for all, with peaks rounded off under the ceiling; limiting lowers the
    // loudness a little, so it takes a few rounds to settle.
    const double knee = PEAK_CEILING * 0.75;
    for (int round = 0; round < 6; ++round)
    {
        const Levels levels = Measure(p_samples);
        const double gain = std::pow(10.0, (TARGET_LOUDNESS_DB - levels.loudness) / 20.0);
        for (float& sample : p_samples)
        {
            double value = sample * gain;
            const double magnitude = std::fabs(value);
            if (magnitude > knee)
            {
                const double room = PEAK_CEILING - knee;
                value = std::copysign(knee + room * std::tanh((magnitude - knee) / room), value);
            }
            sample = float(value);
        }
    }
}

} // namespace audiogen
