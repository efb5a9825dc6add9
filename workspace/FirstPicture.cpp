#include "workspace/FirstPicture.h"

#include <utility>

void FirstPicture::whenShown(std::function<void()> job)
{
    if (m_shown)
        job();
    else
        m_waiting.append(std::move(job));
}

void FirstPicture::markShown()
{
    if (m_shown)
        return;
    m_shown = true;
    const QList<std::function<void()>> jobs = std::exchange(m_waiting, {});
    for (const std::function<void()> &job : jobs)
        job();
}

void FirstPicture::dropWaiting()
{
    m_waiting.clear();
    m_shown = true;
}
