// Nothing of its own: compiling this file makes the precompiled headers of the product.
