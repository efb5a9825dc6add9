#include "app/FontWarmUp.h"

#include <QFontDatabase>
#include <QStringList>

#include <fontconfig/fontconfig.h>

FontWarmUp::FontWarmUp()
{
    std::future<bool> application = m_application.get_future();
    m_thread = std::thread([application = std::move(application)]() mutable {
        FcInit();
        if (application.get())
            QFontDatabase::families();
    });
}

FontWarmUp::~FontWarmUp()
{
    finish();
}

void FontWarmUp::applicationStarted()
{
    if (m_told)
        return;
    m_told = true;
    m_application.set_value(true);
}

void FontWarmUp::finish()
{
    if (!m_told) {
        m_told = true;
        m_application.set_value(false);
    }
    if (m_thread.joinable())
        m_thread.join();
}
