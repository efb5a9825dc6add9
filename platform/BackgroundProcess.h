#pragma once

class QProcess;

// Helper programs that work while the user waits for nothing in particular
// (rendering a tune, synthesizing a spoken line) run at the lowest CPU
// priority, so that on a small machine the window keeps drawing and answering
// clicks while they work.
namespace BackgroundProcess {

// Call before QProcess::start: the started program runs "nice 19".
void lowerPriority(QProcess *process);

} // namespace BackgroundProcess
