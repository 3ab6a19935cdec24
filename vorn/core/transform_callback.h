// The coordinate callback that every Transform in the library takes.
//
// The callback maps one source coordinate (x, y) to one target coordinate, written
// through outX and outY. The library hands `context` to every call unchanged and never
// looks at it, so a caller can pass its projection state through it. The callback must
// write both outputs; it may throw, in which case the object being transformed keeps
// the coordinates it had already finished (each Transform says what that leaves).
#ifndef VORN_CORE_TRANSFORM_CALLBACK_H
#define VORN_CORE_TRANSFORM_CALLBACK_H

typedef void (*VornTransformCallback)(double x, double y, double* outX, double* outY,
                                      void* context);

#endif
