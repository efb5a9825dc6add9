// Linked into every test program, so that a suite run by hand is as harmless
// as one run by CTest through tests/isolated.sh: its HOME and XDG folders are
// temporary and power requests are only written down. It runs before main,
// because QApplication and the code under test read the environment early.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <sys/stat.h>

namespace {

std::string variable(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

class TestIsolation
{
public:
    TestIsolation()
    {
        // tests/isolated.sh has already given this run its own folders.
        if (variable("LANTERN_TEST_ROOT").empty())
            makeOwnRoot();
        // Whatever the caller set, a test never reaches the real power control.
        if (variable("LANTERN_POWER_CONTROL").rfind("record:", 0) != 0)
            setenv("LANTERN_POWER_CONTROL", ("record:" + variable("LANTERN_TEST_ROOT") + "/power-requests.log").c_str(), 1);
    }

    ~TestIsolation()
    {
        std::error_code ignored;
        if (!m_root.empty())
            std::filesystem::remove_all(m_root, ignored);
    }

private:
    // The same folders tests/isolated.sh makes.
    void makeOwnRoot()
    {
        const std::string tmp = variable("TMPDIR");
        std::string pattern = (tmp.empty() ? "/tmp" : tmp) + "/lantern-test.XXXXXX";
        if (!mkdtemp(pattern.data())) {
            std::perror("test isolation: cannot make a temporary folder; refusing to run in the real HOME");
            std::_Exit(1);
        }
        m_root = pattern;
        chmod(m_root.c_str(), 0755);
        const std::string home = m_root + "/home";
        for (const auto &[name, path] : {std::pair<const char *, std::string>{"HOME", home},
                                         {"XDG_CONFIG_HOME", home + "/.config"},
                                         {"XDG_DATA_HOME", home + "/.local/share"},
                                         {"XDG_STATE_HOME", home + "/.local/state"},
                                         {"XDG_CACHE_HOME", home + "/.cache"}}) {
            std::error_code ignored;
            std::filesystem::create_directories(path, ignored);
            setenv(name, path.c_str(), 1);
        }
        setenv("LANTERN_TEST_ROOT", m_root.c_str(), 1);
        const std::string qpa = variable("LANTERN_TEST_QPA");
        setenv("QT_QPA_PLATFORM", qpa.empty() ? "offscreen" : qpa.c_str(), 1);
        unsetenv("WINDIR");
    }

    std::string m_root;
};

const TestIsolation isolation;

} // namespace
