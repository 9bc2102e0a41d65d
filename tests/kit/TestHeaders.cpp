// Compiling this file creates the precompiled headers of the tests.
int main() {}
