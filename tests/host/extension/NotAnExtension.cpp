// A shared library that loads fine but offers none of the extension entry points.
extern "C" __attribute__((visibility("default"))) int notAnExtensionAnswer() {
    return 42;
}
