#pragma once

// How a character stands in one picture. Every animation is a list of poses;
// each artist draws a pose in its own way.
struct Pose
{
    double eyes = 1.0;      // 1 open, 0 shut
    bool happyEyes = false; // smiling eyes, drawn as arches
    double lookX = 0.0;     // where the pupils look, -1 (left) to 1 (right)
    double lookY = 0.0;     // -1 (up) to 1 (down)
    double mouth = 0.0;     // 0 a closed smile, 1 wide open
    double leftArm = 0.0;   // arm on the screen's left: 0 hanging, 90 straight out, 170 up
    double rightArm = 0.0;  // arm on the screen's right, the same way
    double tilt = 0.0;      // lean in degrees, positive to the right
    double headTilt = 0.0;  // the face alone, in degrees
    double bob = 0.0;       // up (negative) or down in pixels
    double bow = 0.0;       // 0 upright, 1 a full bow
    double scale = 1.0;     // growing in when shown, shrinking when hidden
    double opacity = 1.0;
    double glow = 0.5; // the lantern's light, the owl's blush
};
