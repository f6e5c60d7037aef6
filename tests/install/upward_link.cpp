// Two libraries for the test check_links_downward_refuses_upward: with
// UPWARD_USER, a library that calls a function of the other without linking
// it (built without -z defs, as the check's own libraries never are).
#ifdef UPWARD_USER
int Provided();
__attribute__((visibility("default"))) int Uses() { return Provided() + 1; }
#else
__attribute__((visibility("default"))) int Provided() { return 1; }
#endif
