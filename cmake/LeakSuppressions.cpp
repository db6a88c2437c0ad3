// Leaks that are not ours, for the leak checker of a sanitized program.

extern "C" const char *__lsan_default_options();
extern "C" const char *__lsan_default_suppressions();

extern "C" const char *__lsan_default_options()
{
    return "print_suppressions=0"; // standard error is for the program's own messages
}

extern "C" const char *__lsan_default_suppressions()
{
    // The JSON parser of Qt 5.15 leaks the container that it was filling when a text turns out to
    // be broken. The window system, fonts and dialogs keep what they made until the process ends.
    return "leak:libQt5Core.so\n"
           "leak:libQt5Gui.so\n"
           "leak:libQt5Widgets.so\n"
           "leak:libfontconfig.so\n"
           "leak:libqoffscreen.so\n";
}
