/* A 32-bit program that imports one function from each DLL of the environment tests' planted machine, and
   nothing else: no C runtime, so the import table holds exactly these. */
__declspec(dllimport) int f_solo32(void);
__declspec(dllimport) int f_solowow(void);
__declspec(dllimport) int f_accanto(void);
__declspec(dllimport) int f_inwindows(void);
__declspec(dllimport) int f_nessuna(void);
__declspec(dllimport) int f_api_ms_win_crt_runtime_l1_1_0(void);

int inizio(void) {
  return f_solo32() + f_solowow() + f_accanto() + f_inwindows() + f_nessuna() + f_api_ms_win_crt_runtime_l1_1_0();
}
