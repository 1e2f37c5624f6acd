// Identifiers of the resources inside the simulated stack.
#define VLSIM_NEIGHBOURHOOD 1
