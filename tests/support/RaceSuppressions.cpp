// SPDX-License-Identifier: GPL-3.0-only
// What the thread sanitizer is told to overlook. It sees only what was compiled with it, and takes a lock or a counter of another
// library for none.
// - An observer of a notification is counted in Poco's own library: the last one who lets go of it, on whichever thread, destroys
//   it. Only that destruction is overlooked, not what observers do.
// - Pango reads the fonts on a thread of its own, with fontconfig and glib; cairo and harfbuzz hand out what they have cached. Only
//   what happens within these libraries is overlooked.
extern "C" __attribute__ ((visibility ("default"))) const char* __tsan_default_suppressions(); // NOLINT

extern "C" const char* __tsan_default_suppressions() // NOLINT
{
    return "race:Poco::NObserver<*>::~NObserver\n"
           "race:Poco::Observer<*>::~Observer\n"
           "race:libfontconfig.so\n"
           "race:libglib-2.0.so\n"
           "race:libcairo.so\n"
           "race:libharfbuzz.so\n";
}
