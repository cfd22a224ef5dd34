/// What a settings module of another build looks like from outside: nothing of it but its stamp can be relied upon.
struct OtherEntry {
    const char* build;
    const void* somethingElse;
};

extern "C" {
extern const OtherEntry velmorandSettingsModule;
const OtherEntry velmorandSettingsModule{"another", nullptr};
}
