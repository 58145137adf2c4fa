"""Generators of the Tessuma Sudoku art."""
