# Warnings are errors everywhere; a warning that must stand is silenced at its place, with the reason.
add_compile_options(-Wall -Wextra -Wpedantic -Werror)
# The tables name only what differs from the defaults; the rest is initialised by the members themselves.
add_compile_options(-Wno-missing-field-initializers)
