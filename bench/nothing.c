/* The least that a program can cost: the peer of the tools' start. */
int main(void) { return 0; }
