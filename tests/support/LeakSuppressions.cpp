// SPDX-License-Identifier: GPL-3.0-only
// The framework keeps one cache of typefaces for the process and frees it only when an application of its own kind shuts down,
// which neither a test nor a command-line program is. Under the leak checker that one object is expected; all others are leaks.
// The cache's lock has memory of its own.
// fontconfig keeps what it has read of its settings, and cairo loses a table when it finishes some documents; of either only the
// library itself can be told from a short stack.
// The leak checker is a library of its own, which finds only what isn't hidden. It keeps silent of what it has passed over: what the
// program says on standard error is compared.
extern "C" __attribute__ ((visibility ("default"))) const char* __lsan_default_suppressions(); // NOLINT
extern "C" __attribute__ ((visibility ("default"))) const char* __lsan_default_options();      // NOLINT

extern "C" const char* __lsan_default_suppressions() // NOLINT
{
    return "leak:juce::SingletonHolder\nleak:juce::ReadWriteLock::\nleak:libfontconfig.so\nleak:libcairo.so\n";
}

extern "C" const char* __lsan_default_options() // NOLINT
{
    return "print_suppressions=0";
}
