// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/BrowserProcess.h"

#include "export/print/PrintError.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

extern char** environ; // NOLINT: the system's name

namespace ZEP::Overmarks
{
namespace
{

constexpr std::size_t longestMessage = 64 << 20;
constexpr std::size_t mostErrorText = 4096;
constexpr auto timeForLastWords = std::chrono::milliseconds (50);
constexpr int lowestOwnNumber = 10; ///< descriptors 3 and 4 are made for the browser while it starts

std::string systemReason (int number) { return std::strerror (number); }

/** The same file under a number that stands in nobody's way. */
FileDescriptor movedUp (FileDescriptor original)
{
    return FileDescriptor (::fcntl (original.get(), F_DUPFD_CLOEXEC, lowestOwnNumber));
}

/** Two ends of a channel. A socket, since a write to a pipe that nobody reads can kill the process that writes. */
std::pair<FileDescriptor, FileDescriptor> makeChannel()
{
    std::array<int, 2> ends {};

    if (::socketpair (AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        throw PrintError ("the browser can't be started: " + systemReason (errno));

    std::pair result { movedUp (FileDescriptor (ends[0])), movedUp (FileDescriptor (ends[1])) };

    if (result.first.get() < 0 || result.second.get() < 0)
        throw PrintError ("the browser can't be started: " + systemReason (errno));

    return result;
}

void setNonBlocking (const FileDescriptor& descriptor)
{
    ::fcntl (descriptor.get(), F_SETFL, ::fcntl (descriptor.get(), F_GETFL) | O_NONBLOCK);
}

int millisecondsUntil (BrowserProcess::Clock::time_point until)
{
    using std::chrono::milliseconds;
    const auto left = std::chrono::ceil<milliseconds> (until - BrowserProcess::Clock::now());
    return static_cast<int> (std::clamp (left, milliseconds (0), milliseconds (60'000)).count());
}

/** What a program that is started gets besides its arguments. */
class SpawnSettings final
{
public:
    SpawnSettings (int channel, int errorText)
    {
        ::posix_spawn_file_actions_init (&actions);
        ::posix_spawn_file_actions_addopen (&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_addopen (&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_adddup2 (&actions, errorText, STDERR_FILENO);
        ::posix_spawn_file_actions_adddup2 (&actions, channel, 3);
        ::posix_spawn_file_actions_adddup2 (&actions, channel, 4);
        // Whatever the application has open is none of the browser's business.
        ::posix_spawn_file_actions_addclosefrom_np (&actions, 5);

        // A group of its own: Ctrl-C is for the application, and the end is for all its children.
        sigset_t none;
        sigset_t all;
        ::sigemptyset (&none);
        ::sigfillset (&all);
        ::posix_spawnattr_init (&attributes);
        ::posix_spawnattr_setpgroup (&attributes, 0);
        ::posix_spawnattr_setsigmask (&attributes, &none);
        ::posix_spawnattr_setsigdefault (&attributes, &all);
        ::posix_spawnattr_setflags (&attributes,
                                    POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }

    SpawnSettings (const SpawnSettings&) = delete;
    SpawnSettings& operator= (const SpawnSettings&) = delete;

    ~SpawnSettings()
    {
        ::posix_spawn_file_actions_destroy (&actions);
        ::posix_spawnattr_destroy (&attributes);
    }

    posix_spawn_file_actions_t actions {};
    posix_spawnattr_t attributes {};
};

std::vector<char*> pointersTo (std::vector<std::string>& texts)
{
    std::vector<char*> pointers;

    for (auto& text : texts)
        pointers.push_back (text.data());

    pointers.push_back (nullptr);
    return pointers;
}

/** The environment of this process, with temporary files in a folder that will be removed. */
std::vector<std::string> environmentWith (const std::filesystem::path& temporaryFolder)
{
    std::vector<std::string> variables;

    for (auto** variable = environ; variable != nullptr && *variable != nullptr; ++variable)
        if (! std::string_view (*variable).starts_with ("TMPDIR="))
            variables.emplace_back (*variable);

    variables.push_back ("TMPDIR=" + temporaryFolder.string());
    return variables;
}

} // namespace

FileDescriptor::FileDescriptor (FileDescriptor&& other) noexcept : number (std::exchange (other.number, -1))
{
}

FileDescriptor& FileDescriptor::operator= (FileDescriptor&& other) noexcept
{
    std::swap (number, other.number);
    return *this;
}

void FileDescriptor::close() noexcept
{
    if (number >= 0)
        ::close (std::exchange (number, -1));
}

BrowserProcess::BrowserProcess (const std::filesystem::path& program,
                                const std::vector<std::string>& arguments,
                                const std::filesystem::path& privateFolder)
{
    auto [ownChannel, childsChannel] = makeChannel();
    auto [ownErrors, childsErrors] = makeChannel();
    setNonBlocking (ownChannel);
    setNonBlocking (ownErrors);
    start (program, arguments, privateFolder, childsChannel.get(), childsErrors.get());
    channel = std::move (ownChannel);
    errors = std::move (ownErrors);
}

void BrowserProcess::start (const std::filesystem::path& program, const std::vector<std::string>& arguments,
                            const std::filesystem::path& privateFolder, int channelOfChild, int errorsOfChild)
{
    const SpawnSettings settings (channelOfChild, errorsOfChild);
    std::vector<std::string> words { program.string() };
    words.insert (words.end(), arguments.begin(), arguments.end());
    auto variables = environmentWith (privateFolder);

    if (const auto error = ::posix_spawn (&process, program.c_str(), &settings.actions, &settings.attributes,
                                          pointersTo (words).data(), pointersTo (variables).data());
        error != 0)
        throw PrintError ("the browser " + program.string() + " can't be started: " + systemReason (error));
}

BrowserProcess::~BrowserProcess()
{
    ::kill (-process, SIGKILL);

    while (::waitpid (process, nullptr, 0) < 0 && errno == EINTR)
        ;

    channel.close();
    readErrorsToTheEnd();
}

void BrowserProcess::send (std::string_view message, Clock::time_point until)
{
    std::string bytes (message);
    bytes += '\0';

    for (std::string_view rest = bytes; ! rest.empty();)
    {
        const auto sent = ::send (channel.get(), rest.data(), rest.size(), MSG_NOSIGNAL);

        if (sent >= 0)
            rest.remove_prefix (static_cast<std::size_t> (sent));
        else if (errno == EAGAIN)
            wait (POLLOUT, until);
        else if (errno != EINTR)
            fail ("the browser has ended before the page was printed");
    }
}

std::string BrowserProcess::receive (Clock::time_point until)
{
    std::array<char, 65536> buffer;

    for (;;)
    {
        if (const auto end = received.find ('\0', searched); end != std::string::npos)
        {
            auto message = received.substr (0, end);
            received.erase (0, end + 1);
            searched = 0;
            return message;
        }

        searched = received.size();

        if (searched > longestMessage)
            fail ("the browser's answer can't be understood");

        const auto length = ::recv (channel.get(), buffer.data(), buffer.size(), 0);

        if (length > 0)
            received.append (buffer.data(), static_cast<std::size_t> (length));
        else if (length < 0 && errno == EAGAIN)
            wait (POLLIN, until);
        else if (length == 0 || errno != EINTR)
            fail ("the browser has ended before the page was printed");
    }
}

/** Waits for the channel to be ready, and passes on what the browser writes to its standard error meanwhile: a browser whose
    complaints nobody reads would stand still. */
void BrowserProcess::wait (short events, Clock::time_point until)
{
    for (;;)
    {
        const auto left = millisecondsUntil (until);

        if (left == 0)
        {
            readErrorsSoFar();
            throw BrowserHangs ("the browser doesn't answer");
        }

        std::array<pollfd, 2> waitedFor { pollfd { channel.get(), events, 0 },
                                          pollfd { errors.get(), POLLIN, 0 } };
        ::poll (waitedFor.data(), waitedFor.size(), left);

        if (waitedFor[1].revents != 0)
            readErrors();

        if (waitedFor[0].revents != 0)
            return;
    }
}

bool BrowserProcess::readErrors()
{
    std::array<char, 4096> buffer;
    const auto length = ::recv (errors.get(), buffer.data(), buffer.size(), 0);

    if (length > 0)
    {
        errorText.append (buffer.data(), static_cast<std::size_t> (length));
        errorText.erase (0, errorText.size() - std::min (errorText.size(), mostErrorText));
    }
    else if (length == 0)
    {
        errors.close();
    }

    return length > 0;
}

/** Every process of the group holds its standard error, so the end of that is the end of all of them. None of them runs any
    more once it has been killed; but a system that is busy freeing a gigabyte isn't waited for. */
void BrowserProcess::readErrorsToTheEnd()
{
    const auto until = Clock::now() + timeForLastWords;

    while (errors.get() >= 0 && millisecondsUntil (until) > 0)
    {
        pollfd waitedFor { errors.get(), POLLIN, 0 };
        ::poll (&waitedFor, 1, millisecondsUntil (until));
        readErrors();
    }
}

/** There may be more of it faster than it is read. */
void BrowserProcess::readErrorsSoFar()
{
    const auto until = Clock::now() + timeForLastWords;

    while (errors.get() >= 0 && Clock::now() < until && readErrors())
        ;
}

void BrowserProcess::fail (const std::string& reason)
{
    readErrorsSoFar();
    throw PrintError (reason);
}

} // namespace ZEP::Overmarks
