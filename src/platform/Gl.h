#pragma once

// OpenGL declarations for the code that draws. The context itself comes from the platform
// layer (Window); any file may call GL once a context is current.
#ifndef GL_GLEXT_PROTOTYPES
#define GL_GLEXT_PROTOTYPES 1
#endif
#include <GL/gl.h>
#include <GL/glext.h>
