#include "pilot/CampaignLink.h"

CampaignLink* g_pCampaignLink = nullptr;
