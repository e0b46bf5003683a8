	.text
	.file	"t.cpp"
	.globl	_Z1fPKfPf                       # -- Begin function _Z1fPKfPf
	.p2align	4, 0x90
	.type	_Z1fPKfPf,@function
_Z1fPKfPf:                              # @_Z1fPKfPf
	.cfi_startproc
# %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	andq	$-64, %rsp
	subq	$8448, %rsp                     # imm = 0x2100
	movq	%rdi, 2096(%rsp)
	movq	%rsi, 2088(%rsp)
	movq	2096(%rsp), %rax
	movq	%rax, 2104(%rsp)
	movq	2104(%rsp), %rax
	vmovdqu64	(%rax), %zmm0
	vmovdqa64	%zmm0, 2112(%rsp)
	vmovaps	2112(%rsp), %zmm0
	vmovaps	%zmm0, 1984(%rsp)
	leaq	1856(%rsp), %rax
	movq	%rax, 2408(%rsp)
	movl	$1065353216, 2404(%rsp)         # imm = 0x3F800000
	movq	2408(%rsp), %rax
	vbroadcastss	2404(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovdqa64	1984(%rsp), %zmm0
	vmovdqa64	%zmm0, 1728(%rsp)
	vmovaps	1728(%rsp), %zmm0
	vmovaps	%zmm0, 2752(%rsp)
	vmovdqa64	2752(%rsp), %zmm0
	vmovdqa64	%zmm0, 2560(%rsp)
	vmovaps	2560(%rsp), %zmm0
	vmovaps	%zmm0, 5568(%rsp)
	vmovaps	5568(%rsp), %zmm0
	leaq	5632(%rsp), %rax
	movq	%rax, 7096(%rsp)
	vmovaps	%zmm0, 6976(%rsp)
	movq	7096(%rsp), %rax
	vmovdqa64	6976(%rsp), %zmm0
	vmovdqa64	%zmm0, (%rax)
	vmovdqa64	5632(%rsp), %zmm0
	vmovdqa64	%zmm0, 2624(%rsp)
	leaq	2496(%rsp), %rax
	movq	%rax, 4712(%rsp)
	movl	$2147483647, 4708(%rsp)         # imm = 0x7FFFFFFF
	movq	4712(%rsp), %rax
	vpbroadcastd	4708(%rsp), %zmm0
	vmovdqa64	%zmm0, (%rax)
	vmovdqa64	2624(%rsp), %zmm1
	vmovdqa64	2496(%rsp), %zmm0
	vmovdqa64	%zmm1, 5440(%rsp)
	vmovdqa64	%zmm0, 5376(%rsp)
	vmovdqa64	5440(%rsp), %zmm0
	vmovdqa64	5376(%rsp), %zmm1
	vpandd	%zmm1, %zmm0, %zmm0
	leaq	5504(%rsp), %rax
	movq	%rax, 7224(%rsp)
	vmovdqa64	%zmm0, 7104(%rsp)
	movq	7224(%rsp), %rax
	vmovdqa64	7104(%rsp), %zmm0
	vmovdqa64	%zmm0, (%rax)
	vmovdqa64	5504(%rsp), %zmm0
	vmovdqa64	%zmm0, 2688(%rsp)
	vmovdqa64	2688(%rsp), %zmm0
	vmovdqa64	%zmm0, 5248(%rsp)
	vmovdqa64	5248(%rsp), %zmm0
	leaq	5312(%rsp), %rax
	movq	%rax, 5816(%rsp)
	vmovdqa64	%zmm0, 5696(%rsp)
	movq	5816(%rsp), %rax
	vmovaps	5696(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	5312(%rsp), %zmm0
	vmovaps	%zmm0, 2816(%rsp)
	vmovaps	2816(%rsp), %zmm0
	vmovaps	%zmm0, 1792(%rsp)
	vmovaps	1856(%rsp), %zmm1
	vmovaps	1792(%rsp), %zmm0
	vmovaps	%zmm1, 2240(%rsp)
	vmovaps	%zmm0, 2176(%rsp)
	vmovaps	2240(%rsp), %zmm0
	vmovaps	2176(%rsp), %zmm1
	vminps	%zmm1, %zmm0, %zmm0
	leaq	2304(%rsp), %rax
	movq	%rax, 6968(%rsp)
	vmovaps	%zmm0, 6848(%rsp)
	movq	6968(%rsp), %rax
	vmovaps	6848(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	2304(%rsp), %zmm0
	vmovaps	%zmm0, 1920(%rsp)
	vmovdqa64	1920(%rsp), %zmm0
	vmovdqa64	%zmm0, 1984(%rsp)
	vmovdqa64	1984(%rsp), %zmm0
	vmovdqa64	%zmm0, 1536(%rsp)
	leaq	1472(%rsp), %rax
	movq	%rax, 2424(%rsp)
	movl	$1073741824, 2420(%rsp)         # imm = 0x40000000
	movq	2424(%rsp), %rax
	vbroadcastss	2420(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	leaq	1408(%rsp), %rax
	movq	%rax, 2440(%rsp)
	movl	$1065353216, 2436(%rsp)         # imm = 0x3F800000
	movq	2440(%rsp), %rax
	vbroadcastss	2436(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	1536(%rsp), %zmm2
	vmovaps	1472(%rsp), %zmm1
	vmovaps	1408(%rsp), %zmm0
	vmovaps	%zmm2, 3200(%rsp)
	vmovaps	%zmm1, 3136(%rsp)
	vmovaps	%zmm0, 3072(%rsp)
	vmovaps	3200(%rsp), %zmm2
	vmovaps	3136(%rsp), %zmm1
	vmovaps	3072(%rsp), %zmm0
	vmovaps	%zmm2, 7744(%rsp)
	vmovaps	%zmm1, 7680(%rsp)
	vmovaps	%zmm0, 7616(%rsp)
	vmovaps	7744(%rsp), %zmm2
	vmovaps	7680(%rsp), %zmm1
	vmovaps	7616(%rsp), %zmm0
	vmovaps	%zmm2, 7936(%rsp)
	vmovaps	%zmm1, 7872(%rsp)
	vmovaps	%zmm0, 7808(%rsp)
	vmovaps	7936(%rsp), %zmm1
	vmovaps	7872(%rsp), %zmm0
	vmovaps	7808(%rsp), %zmm2
	vfmadd213ps	%zmm2, %zmm1, %zmm0     # zmm0 = (zmm1 * zmm0) + zmm2
	leaq	3264(%rsp), %rax
	movq	%rax, 6712(%rsp)
	vmovaps	%zmm0, 6592(%rsp)
	movq	6712(%rsp), %rax
	vmovaps	6592(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	3264(%rsp), %zmm0
	vmovaps	%zmm0, 1600(%rsp)
	vmovdqa64	1984(%rsp), %zmm0
	vmovdqa64	%zmm0, 1280(%rsp)
	leaq	1216(%rsp), %rax
	movq	%rax, 2456(%rsp)
	movl	$1065353216, 2452(%rsp)         # imm = 0x3F800000
	movq	2456(%rsp), %rax
	vbroadcastss	2452(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	1280(%rsp), %zmm1
	vmovaps	1216(%rsp), %zmm0
	vmovaps	%zmm1, 3392(%rsp)
	vmovaps	%zmm0, 3328(%rsp)
	vmovaps	3392(%rsp), %zmm0
	vmovaps	3328(%rsp), %zmm1
	vaddps	%zmm1, %zmm0, %zmm0
	leaq	3456(%rsp), %rax
	movq	%rax, 6584(%rsp)
	vmovaps	%zmm0, 6464(%rsp)
	movq	6584(%rsp), %rax
	vmovaps	6464(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	3456(%rsp), %zmm0
	vmovaps	%zmm0, 1344(%rsp)
	vmovaps	1600(%rsp), %zmm1
	vmovaps	1344(%rsp), %zmm0
	vmovaps	%zmm1, 2944(%rsp)
	vmovaps	%zmm0, 2880(%rsp)
	vmovaps	2944(%rsp), %zmm0
	vmovaps	2880(%rsp), %zmm1
	vdivps	%zmm1, %zmm0, %zmm0
	leaq	3008(%rsp), %rax
	movq	%rax, 6840(%rsp)
	vmovaps	%zmm0, 6720(%rsp)
	movq	6840(%rsp), %rax
	vmovaps	6720(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	3008(%rsp), %zmm0
	vmovaps	%zmm0, 1664(%rsp)
	vmovdqa64	1664(%rsp), %zmm0
	vmovdqa64	%zmm0, 1984(%rsp)
	vmovdqa64	1984(%rsp), %zmm0
	vmovdqa64	%zmm0, 1024(%rsp)
	leaq	960(%rsp), %rax
	movq	%rax, 2472(%rsp)
	movl	$1056964608, 2468(%rsp)         # imm = 0x3F000000
	movq	2472(%rsp), %rax
	vbroadcastss	2468(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	1024(%rsp), %zmm1
	vmovaps	960(%rsp), %zmm0
	vmovaps	%zmm1, 3840(%rsp)
	vmovaps	%zmm0, 3776(%rsp)
	vmovaps	3840(%rsp), %zmm1
	vmovaps	3776(%rsp), %zmm0
	vcmpltps	%zmm1, %zmm0, %k0
	vpmovm2d	%k0, %zmm0
	vmovdqa64	%zmm0, 8000(%rsp)
	vmovdqa64	8000(%rsp), %zmm0
	leaq	8064(%rsp), %rax
	movq	%rax, 8248(%rsp)
	vmovdqa64	%zmm0, 8128(%rsp)
	movq	8248(%rsp), %rax
	vmovdqa64	8128(%rsp), %zmm0
	vmovdqa64	%zmm0, (%rax)
	vmovdqa64	8064(%rsp), %zmm0
	vmovdqa64	%zmm0, 3904(%rsp)
	vmovdqa64	3904(%rsp), %zmm0
	vmovdqa64	%zmm0, 1088(%rsp)
	vmovdqa64	1984(%rsp), %zmm0
	vmovdqa64	%zmm0, 896(%rsp)
	leaq	768(%rsp), %rax
	movq	%rax, 2488(%rsp)
	movl	$1073741824, 2484(%rsp)         # imm = 0x40000000
	movq	2488(%rsp), %rax
	vbroadcastss	2484(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovdqa64	1984(%rsp), %zmm0
	vmovdqa64	%zmm0, 704(%rsp)
	vmovaps	768(%rsp), %zmm1
	vmovaps	704(%rsp), %zmm0
	vmovaps	%zmm1, 4224(%rsp)
	vmovaps	%zmm0, 4160(%rsp)
	vmovaps	4224(%rsp), %zmm0
	vmovaps	4160(%rsp), %zmm1
	vmulps	%zmm1, %zmm0, %zmm0
	leaq	4288(%rsp), %rax
	movq	%rax, 6200(%rsp)
	vmovaps	%zmm0, 6080(%rsp)
	movq	6200(%rsp), %rax
	vmovaps	6080(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	4288(%rsp), %zmm0
	vmovaps	%zmm0, 832(%rsp)
	vmovdqa64	1088(%rsp), %zmm2
	vmovaps	896(%rsp), %zmm1
	vmovaps	832(%rsp), %zmm0
	vmovdqa64	%zmm2, 3648(%rsp)
	vmovaps	%zmm1, 3584(%rsp)
	vmovaps	%zmm0, 3520(%rsp)
	vmovdqa64	3648(%rsp), %zmm2
	vmovaps	3584(%rsp), %zmm1
	vmovaps	3520(%rsp), %zmm0
	vptestmd	%zmm2, %zmm2, %k1
	vmovaps	%zmm1, %zmm0 {%k1}
	leaq	3712(%rsp), %rax
	movq	%rax, 6456(%rsp)
	vmovaps	%zmm0, 6336(%rsp)
	movq	6456(%rsp), %rax
	vmovaps	6336(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	3712(%rsp), %zmm0
	vmovaps	%zmm0, 1152(%rsp)
	vmovdqa64	1152(%rsp), %zmm0
	vmovdqa64	%zmm0, 1984(%rsp)
	vmovdqa64	1984(%rsp), %zmm0
	vmovdqa64	%zmm0, 512(%rsp)
	vmovaps	512(%rsp), %zmm0
	vmovaps	%zmm0, 4544(%rsp)
	vcvttps2dq	4544(%rsp), %zmm0
	leaq	4608(%rsp), %rax
	movq	%rax, 7480(%rsp)
	vmovdqa64	%zmm0, 7360(%rsp)
	movq	7480(%rsp), %rax
	vmovdqa64	7360(%rsp), %zmm0
	vmovdqa64	%zmm0, (%rax)
	vmovdqa64	4608(%rsp), %zmm0
	vmovdqa64	%zmm0, 576(%rsp)
	leaq	448(%rsp), %rax
	movq	%rax, 4728(%rsp)
	movl	$3, 4724(%rsp)
	movq	4728(%rsp), %rax
	vpbroadcastd	4724(%rsp), %zmm0
	vmovdqa64	%zmm0, (%rax)
	vmovdqa64	576(%rsp), %zmm1
	vmovdqa64	448(%rsp), %zmm0
	vmovdqa64	%zmm1, 4416(%rsp)
	vmovdqa64	%zmm0, 4352(%rsp)
	vmovdqa64	4416(%rsp), %zmm0
	vmovdqa64	4352(%rsp), %zmm1
	vpaddd	%zmm1, %zmm0, %zmm0
	leaq	4480(%rsp), %rax
	movq	%rax, 7608(%rsp)
	vmovdqa64	%zmm0, 7488(%rsp)
	movq	7608(%rsp), %rax
	vmovdqa64	7488(%rsp), %zmm0
	vmovdqa64	%zmm0, (%rax)
	vmovdqa64	4480(%rsp), %zmm0
	vmovdqa64	%zmm0, 640(%rsp)
	vmovdqa64	1984(%rsp), %zmm0
	vmovdqa64	%zmm0, 320(%rsp)
	vmovdqa64	640(%rsp), %zmm0
	vmovdqa64	%zmm0, 128(%rsp)
	vmovdqa64	128(%rsp), %zmm0
	vmovdqa64	%zmm0, 4928(%rsp)
	movl	$2, 4924(%rsp)
	vmovdqa64	4928(%rsp), %zmm0
	vpbroadcastd	4924(%rsp), %zmm1
                                        # kill: def $xmm1 killed $xmm1 killed $zmm1
	vpmovzxdq	%xmm1, %xmm1            # xmm1 = xmm1[0],zero,xmm1[1],zero
	vpslld	%xmm1, %zmm0, %zmm0
	leaq	4992(%rsp), %rax
	movq	%rax, 7352(%rsp)
	vmovdqa64	%zmm0, 7232(%rsp)
	movq	7352(%rsp), %rax
	vmovdqa64	7232(%rsp), %zmm0
	vmovdqa64	%zmm0, (%rax)
	vmovdqa64	4992(%rsp), %zmm0
	vmovdqa64	%zmm0, 192(%rsp)
	vmovdqa64	192(%rsp), %zmm0
	vmovdqa64	%zmm0, 4736(%rsp)
	vcvtdq2ps	4736(%rsp), %zmm0
	leaq	4800(%rsp), %rax
	movq	%rax, 6072(%rsp)
	vmovaps	%zmm0, 5952(%rsp)
	movq	6072(%rsp), %rax
	vmovaps	5952(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	4800(%rsp), %zmm0
	vmovaps	%zmm0, 256(%rsp)
	vmovaps	320(%rsp), %zmm1
	vmovaps	256(%rsp), %zmm0
	vmovaps	%zmm1, 4032(%rsp)
	vmovaps	%zmm0, 3968(%rsp)
	vmovaps	4032(%rsp), %zmm0
	vmulps	3968(%rsp), %zmm0, %zmm0
	leaq	4096(%rsp), %rax
	movq	%rax, 6328(%rsp)
	vmovaps	%zmm0, 6208(%rsp)
	movq	6328(%rsp), %rax
	vmovaps	6208(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	4096(%rsp), %zmm0
	vmovaps	%zmm0, 384(%rsp)
	leaq	1984(%rsp), %rdi
	leaq	384(%rsp), %rsi
	movl	$64, %edx
	vzeroupper
	callq	memcpy@PLT
	movq	%rsp, %rdi
	leaq	1984(%rsp), %rsi
	movl	$64, %edx
	callq	memcpy@PLT
	vmovaps	(%rsp), %zmm0
	vmovaps	%zmm0, 5056(%rsp)
	vmovaps	5056(%rsp), %zmm0
	vmovaps	%zmm0, 8256(%rsp)
	vmovaps	8256(%rsp), %zmm0
	vmovaps	%zmm0, 8320(%rsp)
	vmovaps	8320(%rsp), %zmm0
	vsqrtps	%zmm0, %zmm0
	leaq	5120(%rsp), %rax
	movq	%rax, 5944(%rsp)
	vmovaps	%zmm0, 5824(%rsp)
	movq	5944(%rsp), %rax
	vmovaps	5824(%rsp), %zmm0
	vmovaps	%zmm0, (%rax)
	vmovaps	5120(%rsp), %zmm0
	vmovaps	%zmm0, 64(%rsp)
	movq	2088(%rsp), %rax
	leaq	64(%rsp), %rcx
	movq	%rcx, 5240(%rsp)
	movq	%rax, 5232(%rsp)
	movq	5240(%rsp), %rsi
	movq	5232(%rsp), %rdi
	movl	$64, %edx
	vzeroupper
	callq	memcpy@PLT
	movq	%rbp, %rsp
	popq	%rbp
	.cfi_def_cfa %rsp, 8
	retq
.Lfunc_end0:
	.size	_Z1fPKfPf, .Lfunc_end0-_Z1fPKfPf
	.cfi_endproc
                                        # -- End function
	.section	.rodata.cst32,"aM",@progbits,32
	.p2align	5                               # -- Begin function _Z1gPKfPf
.LCPI1_0:
	.long	0                               # 0x0
	.long	8                               # 0x8
	.long	1                               # 0x1
	.long	9                               # 0x9
	.long	2                               # 0x2
	.long	10                              # 0xa
	.long	3                               # 0x3
	.long	11                              # 0xb
	.text
	.globl	_Z1gPKfPf
	.p2align	4, 0x90
	.type	_Z1gPKfPf,@function
_Z1gPKfPf:                              # @_Z1gPKfPf
	.cfi_startproc
# %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	andq	$-32, %rsp
	subq	$1216, %rsp                     # imm = 0x4C0
	movq	%rdi, 304(%rsp)
	movq	%rsi, 296(%rsp)
	movq	304(%rsp), %rax
	movq	%rax, 376(%rsp)
	movq	376(%rsp), %rax
	vmovdqu	(%rax), %ymm0
	vmovdqa	%ymm0, 384(%rsp)
	vmovaps	384(%rsp), %ymm0
	vmovaps	%ymm0, 256(%rsp)
	movq	304(%rsp), %rax
	addq	$32, %rax
	movq	%rax, 312(%rsp)
	movq	312(%rsp), %rax
	vmovdqu	(%rax), %ymm0
	vmovdqa	%ymm0, 320(%rsp)
	vmovaps	320(%rsp), %ymm0
	vmovaps	%ymm0, 224(%rsp)
	vmovdqa	256(%rsp), %ymm0
	vmovdqa	%ymm0, 128(%rsp)
	vmovaps	128(%rsp), %ymm0
	vmovaps	%ymm0, 544(%rsp)
	vmovaps	544(%rsp), %ymm0
	vmovaps	%ymm0, 736(%rsp)
	vmovaps	736(%rsp), %ymm0
	vmovaps	%ymm0, 960(%rsp)
	vsqrtps	960(%rsp), %ymm0
	leaq	576(%rsp), %rax
	movq	%rax, 888(%rsp)
	vmovaps	%ymm0, 832(%rsp)
	movq	888(%rsp), %rax
	vmovaps	832(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	576(%rsp), %ymm0
	vmovaps	%ymm0, 160(%rsp)
	vmovdqa	256(%rsp), %ymm0
	vmovdqa	%ymm0, 96(%rsp)
	vmovdqa	256(%rsp), %ymm0
	vmovdqa	%ymm0, 32(%rsp)
	vmovdqa	224(%rsp), %ymm0
	vmovdqa	%ymm0, (%rsp)
	vmovaps	32(%rsp), %ymm1
	vmovaps	(%rsp), %ymm0
	vmovaps	%ymm1, 640(%rsp)
	vmovaps	%ymm0, 608(%rsp)
	vmovaps	640(%rsp), %ymm0
	vmovaps	608(%rsp), %ymm2
	vmovdqa	.LCPI1_0(%rip), %ymm1           # ymm1 = [0,8,1,9,2,10,3,11]
	vpermt2ps	%ymm2, %ymm1, %ymm0
	leaq	672(%rsp), %rax
	movq	%rax, 824(%rsp)
	vmovaps	%ymm0, 768(%rsp)
	movq	824(%rsp), %rax
	vmovaps	768(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	672(%rsp), %ymm0
	vmovaps	%ymm0, 64(%rsp)
	vmovaps	160(%rsp), %ymm2
	vmovaps	96(%rsp), %ymm1
	vmovaps	64(%rsp), %ymm0
	vmovaps	%ymm2, 480(%rsp)
	vmovaps	%ymm1, 448(%rsp)
	vmovaps	%ymm0, 416(%rsp)
	vmovaps	480(%rsp), %ymm2
	vmovaps	448(%rsp), %ymm1
	vmovaps	416(%rsp), %ymm0
	vmovaps	%ymm2, 1056(%rsp)
	vmovaps	%ymm1, 1024(%rsp)
	vmovaps	%ymm0, 992(%rsp)
	vmovaps	1056(%rsp), %ymm2
	vmovaps	1024(%rsp), %ymm1
	vmovaps	992(%rsp), %ymm0
	vmovaps	%ymm2, 1152(%rsp)
	vmovaps	%ymm1, 1120(%rsp)
	vmovaps	%ymm0, 1088(%rsp)
	vmovaps	1152(%rsp), %ymm1
	vmovaps	1120(%rsp), %ymm0
	vmovaps	1088(%rsp), %ymm2
	vfmadd213ps	%ymm2, %ymm1, %ymm0     # ymm0 = (ymm1 * ymm0) + ymm2
	leaq	512(%rsp), %rax
	movq	%rax, 952(%rsp)
	vmovaps	%ymm0, 896(%rsp)
	movq	952(%rsp), %rax
	vmovaps	896(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	512(%rsp), %ymm0
	vmovaps	%ymm0, 192(%rsp)
	movq	296(%rsp), %rax
	leaq	192(%rsp), %rcx
	movq	%rcx, 728(%rsp)
	movq	%rax, 720(%rsp)
	movq	728(%rsp), %rcx
	movq	720(%rsp), %rax
	movq	(%rcx), %rdx
	movq	%rdx, (%rax)
	movq	8(%rcx), %rdx
	movq	%rdx, 8(%rax)
	movq	16(%rcx), %rdx
	movq	%rdx, 16(%rax)
	movq	24(%rcx), %rcx
	movq	%rcx, 24(%rax)
	movq	%rbp, %rsp
	popq	%rbp
	.cfi_def_cfa %rsp, 8
	vzeroupper
	retq
.Lfunc_end1:
	.size	_Z1gPKfPf, .Lfunc_end1-_Z1gPKfPf
	.cfi_endproc
                                        # -- End function
	.globl	_Z1hPKdPd                       # -- Begin function _Z1hPKdPd
	.p2align	4, 0x90
	.type	_Z1hPKdPd,@function
_Z1hPKdPd:                              # @_Z1hPKdPd
	.cfi_startproc
# %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	andq	$-32, %rsp
	subq	$1504, %rsp                     # imm = 0x5E0
	movq	%rdi, 368(%rsp)
	movq	%rsi, 360(%rsp)
	movq	368(%rsp), %rax
	movq	%rax, 376(%rsp)
	movq	376(%rsp), %rax
	vmovdqu	(%rax), %ymm0
	vmovdqa	%ymm0, 384(%rsp)
	vmovapd	384(%rsp), %ymm0
	vmovapd	%ymm0, 320(%rsp)
	vmovdqa	320(%rsp), %ymm0
	vmovdqa	%ymm0, 224(%rsp)
	vmovapd	224(%rsp), %ymm0
	vmovapd	%ymm0, 544(%rsp)
	vmovapd	544(%rsp), %ymm0
	vmovapd	%ymm0, 896(%rsp)
	vmovapd	896(%rsp), %ymm0
	vmovapd	%ymm0, 1120(%rsp)
	vsqrtpd	1120(%rsp), %ymm0
	leaq	576(%rsp), %rax
	movq	%rax, 1048(%rsp)
	vmovapd	%ymm0, 992(%rsp)
	movq	1048(%rsp), %rax
	vmovapd	992(%rsp), %ymm0
	vmovapd	%ymm0, (%rax)
	vmovapd	576(%rsp), %ymm0
	vmovapd	%ymm0, 256(%rsp)
	vmovdqa	320(%rsp), %ymm0
	vmovdqa	%ymm0, 192(%rsp)
	vmovdqa	320(%rsp), %ymm0
	vmovdqa	%ymm0, 96(%rsp)
	leaq	64(%rsp), %rax
	movq	%rax, 856(%rsp)
	movabsq	$4607182418800017408, %rax      # imm = 0x3FF0000000000000
	movq	%rax, 848(%rsp)
	movq	856(%rsp), %rax
	vbroadcastsd	848(%rsp), %ymm0
	vmovapd	%ymm0, (%rax)
	vmovapd	96(%rsp), %ymm1
	vmovapd	64(%rsp), %ymm0
	vmovapd	%ymm1, 768(%rsp)
	vmovapd	%ymm0, 736(%rsp)
	vmovapd	768(%rsp), %ymm0
	vmovapd	736(%rsp), %ymm1
	vcmpltpd	%ymm1, %ymm0, %ymm0
	vmovdqa	%ymm0, 1152(%rsp)
	vmovdqa	1152(%rsp), %ymm0
	leaq	1184(%rsp), %rax
	movq	%rax, 1272(%rsp)
	vmovdqa	%ymm0, 1216(%rsp)
	movq	1272(%rsp), %rax
	vmovdqa	1216(%rsp), %ymm0
	vmovdqa	%ymm0, (%rax)
	vmovdqa	1184(%rsp), %ymm0
	vmovdqa	%ymm0, 800(%rsp)
	vmovdqa	800(%rsp), %ymm0
	vmovdqa	%ymm0, 128(%rsp)
	vmovdqa	320(%rsp), %ymm0
	vmovdqa	%ymm0, 32(%rsp)
	movq	%rsp, %rax
	movq	%rax, 872(%rsp)
	movabsq	$4613937818241073152, %rax      # imm = 0x4008000000000000
	movq	%rax, 864(%rsp)
	movq	872(%rsp), %rax
	vbroadcastsd	864(%rsp), %ymm0
	vmovapd	%ymm0, (%rax)
	vmovdqa	128(%rsp), %ymm2
	vmovapd	32(%rsp), %ymm1
	vmovapd	(%rsp), %ymm0
	vmovdqa	%ymm2, 672(%rsp)
	vmovapd	%ymm1, 640(%rsp)
	vmovapd	%ymm0, 608(%rsp)
	vmovdqa	672(%rsp), %ymm2
	vmovapd	640(%rsp), %ymm1
	vmovapd	608(%rsp), %ymm0
	vptestmq	%ymm2, %ymm2, %k1
	vmovapd	%ymm1, %ymm0 {%k1}
	leaq	704(%rsp), %rax
	movq	%rax, 984(%rsp)
	vmovapd	%ymm0, 928(%rsp)
	movq	984(%rsp), %rax
	vmovapd	928(%rsp), %ymm0
	vmovapd	%ymm0, (%rax)
	vmovapd	704(%rsp), %ymm0
	vmovapd	%ymm0, 160(%rsp)
	vmovapd	256(%rsp), %ymm2
	vmovapd	192(%rsp), %ymm1
	vmovapd	160(%rsp), %ymm0
	vmovapd	%ymm2, 480(%rsp)
	vmovapd	%ymm1, 448(%rsp)
	vmovapd	%ymm0, 416(%rsp)
	vmovapd	480(%rsp), %ymm2
	vmovapd	448(%rsp), %ymm1
	vmovapd	416(%rsp), %ymm0
	vmovapd	%ymm2, 1344(%rsp)
	vmovapd	%ymm1, 1312(%rsp)
	vmovapd	%ymm0, 1280(%rsp)
	vmovapd	1344(%rsp), %ymm2
	vmovapd	1312(%rsp), %ymm1
	vmovapd	1280(%rsp), %ymm0
	vmovapd	%ymm2, 1440(%rsp)
	vmovapd	%ymm1, 1408(%rsp)
	vmovapd	%ymm0, 1376(%rsp)
	vmovapd	1440(%rsp), %ymm1
	vmovapd	1408(%rsp), %ymm0
	vmovapd	1376(%rsp), %ymm2
	vfmadd213pd	%ymm2, %ymm1, %ymm0     # ymm0 = (ymm1 * ymm0) + ymm2
	leaq	512(%rsp), %rax
	movq	%rax, 1112(%rsp)
	vmovapd	%ymm0, 1056(%rsp)
	movq	1112(%rsp), %rax
	vmovapd	1056(%rsp), %ymm0
	vmovapd	%ymm0, (%rax)
	vmovapd	512(%rsp), %ymm0
	vmovapd	%ymm0, 288(%rsp)
	movq	360(%rsp), %rax
	leaq	288(%rsp), %rcx
	movq	%rcx, 888(%rsp)
	movq	%rax, 880(%rsp)
	movq	888(%rsp), %rcx
	movq	880(%rsp), %rax
	movq	(%rcx), %rdx
	movq	%rdx, (%rax)
	movq	8(%rcx), %rdx
	movq	%rdx, 8(%rax)
	movq	16(%rcx), %rdx
	movq	%rdx, 16(%rax)
	movq	24(%rcx), %rcx
	movq	%rcx, 24(%rax)
	movq	%rbp, %rsp
	popq	%rbp
	.cfi_def_cfa %rsp, 8
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
