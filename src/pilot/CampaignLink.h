#pragma once

// What pilot records need of the campaign: loading a pilot moves the campaign to the mission
// the pilot has reached, and storing a pilot records the current mission. The campaign
// installs itself as g_pCampaignLink; with none installed, pilots load and store without it.
class CampaignLink
{
public:
    virtual ~CampaignLink() = default;

    // Makes p_name the current mission.
    virtual void SetMission(const char* p_name) = 0;
    // Back to the campaign's first mission.
    virtual void Reset() = 0;
    // The current mission's section name; never null.
    virtual const char* GetMissionName() const = 0;
};

extern CampaignLink* g_pCampaignLink;
