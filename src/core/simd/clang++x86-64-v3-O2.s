	.text
	.file	"t.cpp"
	.section	.rodata.cst4,"aM",@progbits,4
	.p2align	2                               # -- Begin function _Z1fPKfPf
.LCPI0_0:
	.long	2147483647                      # 0x7fffffff
.LCPI0_1:
	.long	0x3f800000                      # float 1
.LCPI0_2:
	.long	0x40000000                      # float 2
.LCPI0_3:
	.long	0x3f000000                      # float 0.5
.LCPI0_4:
	.long	12                              # 0xc
	.text
	.globl	_Z1fPKfPf
	.p2align	4, 0x90
	.type	_Z1fPKfPf,@function
_Z1fPKfPf:                              # @_Z1fPKfPf
	.cfi_startproc
# %bb.0:
	vbroadcastss	.LCPI0_0(%rip), %ymm0   # ymm0 = [2147483647,2147483647,2147483647,2147483647,2147483647,2147483647,2147483647,2147483647]
	vandps	(%rdi), %ymm0, %ymm0
	vbroadcastss	.LCPI0_1(%rip), %ymm1   # ymm1 = [1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0]
	vminps	%ymm0, %ymm1, %ymm0
	vbroadcastss	.LCPI0_2(%rip), %ymm2   # ymm2 = [2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0]
	vfmadd213ps	%ymm1, %ymm0, %ymm2     # ymm2 = (ymm0 * ymm2) + ymm1
	vaddps	%ymm1, %ymm0, %ymm0
	vdivps	%ymm0, %ymm2, %ymm0
	vbroadcastss	.LCPI0_3(%rip), %ymm1   # ymm1 = [5.0E-1,5.0E-1,5.0E-1,5.0E-1,5.0E-1,5.0E-1,5.0E-1,5.0E-1]
	vcmpnltps	%ymm0, %ymm1, %ymm1
	vaddps	%ymm0, %ymm0, %ymm2
	vblendvps	%ymm1, %ymm2, %ymm0, %ymm0
	vcvttps2dq	%ymm0, %ymm1
	vpslld	$2, %ymm1, %ymm1
	vpbroadcastd	.LCPI0_4(%rip), %ymm2   # ymm2 = [12,12,12,12,12,12,12,12]
	vpaddd	%ymm2, %ymm1, %ymm1
	vcvtdq2ps	%ymm1, %ymm1
	vmulps	%ymm1, %ymm0, %ymm0
	vsqrtps	%ymm0, %ymm0
	vmovups	%ymm0, (%rsi)
	vzeroupper
	retq
.Lfunc_end0:
	.size	_Z1fPKfPf, .Lfunc_end0-_Z1fPKfPf
	.cfi_endproc
                                        # -- End function
	.globl	_Z1gPKfPf                       # -- Begin function _Z1gPKfPf
	.p2align	4, 0x90
	.type	_Z1gPKfPf,@function
_Z1gPKfPf:                              # @_Z1gPKfPf
	.cfi_startproc
# %bb.0:
	vmovups	(%rdi), %ymm0
	vsqrtps	%ymm0, %ymm1
	vmovups	(%rdi), %xmm2
	vmovups	32(%rdi), %xmm3
	vunpcklps	%xmm3, %xmm2, %xmm4     # xmm4 = xmm2[0],xmm3[0],xmm2[1],xmm3[1]
	vunpckhps	%xmm3, %xmm2, %xmm2     # xmm2 = xmm2[2],xmm3[2],xmm2[3],xmm3[3]
	vinsertf128	$1, %xmm2, %ymm4, %ymm2
	vfmadd231ps	%ymm1, %ymm0, %ymm2     # ymm2 = (ymm0 * ymm1) + ymm2
	vmovups	%ymm2, (%rsi)
	vzeroupper
	retq
.Lfunc_end1:
	.size	_Z1gPKfPf, .Lfunc_end1-_Z1gPKfPf
	.cfi_endproc
                                        # -- End function
	.section	.rodata.cst8,"aM",@progbits,8
	.p2align	3                               # -- Begin function _Z1hPKdPd
.LCPI2_0:
	.quad	0x3ff0000000000000              # double 1
.LCPI2_1:
	.quad	0x4008000000000000              # double 3
	.text
	.globl	_Z1hPKdPd
	.p2align	4, 0x90
	.type	_Z1hPKdPd,@function
_Z1hPKdPd:                              # @_Z1hPKdPd
	.cfi_startproc
# %bb.0:
	vmovupd	(%rdi), %ymm0
	vsqrtpd	%ymm0, %ymm1
	vbroadcastsd	.LCPI2_0(%rip), %ymm2   # ymm2 = [1.0E+0,1.0E+0,1.0E+0,1.0E+0]
	vcmpnltpd	%ymm2, %ymm0, %ymm2
	vbroadcastsd	.LCPI2_1(%rip), %ymm3   # ymm3 = [3.0E+0,3.0E+0,3.0E+0,3.0E+0]
	vblendvpd	%ymm2, %ymm3, %ymm0, %ymm2
	vfmadd231pd	%ymm1, %ymm0, %ymm2     # ymm2 = (ymm0 * ymm1) + ymm2
	vmovupd	%ymm2, (%rsi)
	vzeroupper
	retq
.Lfunc_end2:
	.size	_Z1hPKdPd, .Lfunc_end2-_Z1hPKdPd
	.cfi_endproc
                                        # -- End function
	.section	".linker-options","e",@llvm_linker_options
	.ident	"Debian clang version 14.0.6"
	.section	".note.GNU-stack","",@progbits
	.addrsig
