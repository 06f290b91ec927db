#include "app/Mode.h"

Mode::Mode() {}

Mode::~Mode() {}

void Mode::OnDisplayReset() {}
