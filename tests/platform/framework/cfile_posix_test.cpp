#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/cfile.h>

#include "tests/platform/temporary_folder.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

// While this lives SIGUSR1 does nothing but end what the thread waits for.
class Interruptions {
public:
    Interruptions() {
        struct sigaction action {};
        action.sa_handler = [](int) {};
        sigaction(SIGUSR1, &action, &m_before);
    }
    Interruptions(Interruptions const&) = delete;
    Interruptions& operator=(Interruptions const&) = delete;
    ~Interruptions() { sigaction(SIGUSR1, &m_before, nullptr); }

private:
    struct sigaction m_before {};
};

TEST(CFilePosix, AWriteThatSignalsInterruptGoesOn) {
    TemporaryFolder const folder;
    std::wstring const name = folder.Name(L"pipe");
    ASSERT_EQ(mkfifo(paramdb::ToUtf8(name).c_str(), 0600), 0);
    std::string sent;
    for (int i = 0; sent.size() < 1'000'000; ++i)
        sent += std::to_string(i) + ' ';

    Interruptions const interruptions;
    std::string received;
    std::thread reader([&, writer = pthread_self()] {
        int const end = open(paramdb::ToUtf8(name).c_str(), O_RDONLY | O_CLOEXEC);
        char bytes[10'000];
        for (ssize_t taken = 0; (taken = read(end, bytes, sizeof bytes)) > 0;) {
            received.append(bytes, static_cast<std::size_t>(taken));
            pthread_kill(writer, SIGUSR1); // which has filled the pipe again, or is about to
        }
        close(end);
    });
    {
        CFile file(name.c_str(), CFile::modeWrite);
        file.Write(sent.data(), static_cast<unsigned>(sent.size()));
    }
    reader.join();
    EXPECT_EQ(received.size(), sent.size());
    EXPECT_TRUE(received == sent);
}

} // namespace
