# Install rules and packaging.
