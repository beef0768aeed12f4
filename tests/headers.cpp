// Nothing: the target that holds the precompiled headers of the tests needs a source.
