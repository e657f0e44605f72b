// A program of nothing but the libraries that it is linked with.
int main() { return 0; }
