/* The program that does nothing: what is measured beside it is the price of running a program. */
int main(void) { return 0; }
