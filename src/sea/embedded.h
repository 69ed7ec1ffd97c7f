// An irregular sea in which a stream function wave passes, and a sea at rest with a current: families made of others.
#pragma once

#include "sea/field.h"

namespace tidearc {

// Type 8. The two seas are blended by embedded_weight; a weight of 0 or 1 asks one of them alone.
double embedded_surface(double time, const Point& at);
void embedded_motion(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion);
WavePressure embedded_pressure(double surface, const Point& at, double time);
Point embedded_cut(const Point& A, const Point& B, double time);

/// Weight of the stream function wave at r periods from its peak.
double blending_weight(double r);

// Type 3. The surface stays at mean water level.
double still_surface(double time, const Point& at);
void current_motion(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion);
WavePressure still_pressure(double surface, const Point& at, double time);
Point still_cut(const Point& A, const Point& B, double time);

}  // namespace tidearc
