# The Windows in-process server.
