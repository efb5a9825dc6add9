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

bool isSet(const char *name)
{
    const char *value = std::getenv(name);
    return value && *value;
}

bool startsWith(const char *value, const char *prefix)
{
    return value && std::string(value).rfind(prefix, 0) == 0;
}

class TestIsolation
{
public:
    TestIsolation()
    {
        // tests/isolated.sh has already given this run its own folders.
        if (!isSet("LANTERN_TEST_ROOT"))
            makeOwnRoot();
        // Whatever the caller set, a test never reaches the real power control.
        if (!startsWith(std::getenv("LANTERN_POWER_CONTROL"), "record:")) {
            const std::string log = std::string(std::getenv("LANTERN_TEST_ROOT")) + "/power-requests.log";
            setenv("LANTERN_POWER_CONTROL", ("record:" + log).c_str(), 1);
        }
    }

    ~TestIsolation()
    {
        if (!m_root.empty()) {
            std::error_code ignored;
            std::filesystem::remove_all(m_root, ignored);
        }
    }

private:
    // The same folders tests/isolated.sh makes.
    void makeOwnRoot()
    {
        const char *tmp = std::getenv("TMPDIR");
        std::string pattern = std::string(isSet("TMPDIR") ? tmp : "/tmp") + "/lantern-test.XXXXXX";
        if (!mkdtemp(pattern.data())) {
            std::perror("test isolation: cannot make a temporary folder; refusing to run in the real HOME");
            std::_Exit(1);
        }
        m_root = pattern;
        chmod(m_root.c_str(), 0755);
        const std::string home = m_root + "/home";
        const std::pair<const char *, std::string> folders[] = {
            {"HOME", home},
            {"XDG_CONFIG_HOME", home + "/.config"},
            {"XDG_DATA_HOME", home + "/.local/share"},
            {"XDG_STATE_HOME", home + "/.local/state"},
            {"XDG_CACHE_HOME", home + "/.cache"},
        };
        for (const auto &[name, path] : folders) {
            std::error_code ignored;
            std::filesystem::create_directories(path, ignored);
            setenv(name, path.c_str(), 1);
        }
        setenv("LANTERN_TEST_ROOT", m_root.c_str(), 1);
        const char *qpa = std::getenv("LANTERN_TEST_QPA");
        setenv("QT_QPA_PLATFORM", isSet("LANTERN_TEST_QPA") ? qpa : "offscreen", 1);
        unsetenv("WINDIR");
    }

    std::string m_root;
};

const TestIsolation isolation;

} // namespace
